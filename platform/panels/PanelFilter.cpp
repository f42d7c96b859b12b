// SPDX-License-Identifier: MIT
#include "PanelFilter.h"

#include <QElapsedTimer>
#include <QFileSystemModel>

#include <utility>

namespace {

constexpr int sliceMilliseconds = 5;

} // namespace

PanelFilter::PanelFilter(PanelTypes types, bool showsFiles, QObject* parent)
    : QSortFilterProxyModel(parent)
    , m_types(std::move(types))
    , m_showsFiles(showsFiles)
{
    m_timer.setInterval(0);
    connect(&m_timer, &QTimer::timeout, this, &PanelFilter::lookUpPendingTypes);
}

void PanelFilter::sort(int column, Qt::SortOrder order)
{
    sourceModel()->sort(column, order);
}

bool PanelFilter::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
    const auto* const files = qobject_cast<const QFileSystemModel*>(sourceModel());
    const QModelIndex index = files->index(sourceRow, 0, sourceParent);
    if (files->isDir(index)) {
        return true;
    }
    if (!m_showsFiles) {
        return false;
    }
    return m_types.acceptsAll() || m_types.acceptsExtensionOf(files->fileName(index)) ||
           (m_types.hasClassicTypes() && acceptsClassicType(files->filePath(index)));
}

bool PanelFilter::acceptsClassicType(const QString& path) const
{
    const auto known = m_known.constFind(path);
    if (known != m_known.constEnd()) {
        return *known;
    }
    m_known.insert(path, false);
    m_pending.append(path);
    m_timer.start();
    return false;
}

void PanelFilter::lookUpPendingTypes()
{
    QElapsedTimer slice;
    slice.start();
    bool found = false;
    while (!m_pending.isEmpty() && !slice.hasExpired(sliceMilliseconds)) {
        const QString path = m_pending.takeLast();
        if (m_types.acceptsClassicTypeOf(path)) {
            m_known.insert(path, true);
            found = true;
        }
    }
    if (m_pending.isEmpty()) {
        m_timer.stop();
    }
    if (found) {
        invalidateFilter();
    }
}
