// SPDX-License-Identifier: MIT
#pragma once

#include "PanelTypes.h"

#include <QHash>
#include <QSortFilterProxyModel>
#include <QStringList>
#include <QTimer>

class QFileSystemModel;

/// Shows the folders and the acceptable files of a file dialog's model.
///
/// Extensions decide at once. The classic type of the other files is looked up while the program is idle, a few
/// milliseconds at a time, and the few that have the right one then appear: a folder of any size opens at once.
class PanelFilter final : public QSortFilterProxyModel
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PanelFilter)

public:
    PanelFilter(PanelTypes types, bool showsFiles, QObject* parent);

    /// The file system model sorts its rows itself, folders first.
    void sort(int column, Qt::SortOrder order) override;

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;

private:
    bool acceptsClassicType(const QString& path) const;
    void lookUpPendingTypes();

    PanelTypes m_types;
    bool m_showsFiles;
    /// Whether a file's classic type is acceptable, by path.
    mutable QHash<QString, bool> m_known;
    mutable QStringList m_pending;
    mutable QTimer m_timer;
};
