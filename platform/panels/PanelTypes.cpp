// SPDX-License-Identifier: MIT
#include "PanelTypes.h"

#include <platform/classic/FileTypes.h>

#include <QFileInfo>

#include <optional>

using namespace Qt::StringLiterals;

PanelTypes::PanelTypes(const QStringList& types)
{
    for (const QString& type : types) {
        (type.startsWith(u'\'') ? m_classicTypes : m_extensions).append(type);
    }
    if (offersApplications()) {
        m_extensions.append(u"desktop"_s);
    }
}

bool PanelTypes::offersApplications() const
{
    return m_extensions.contains(u"app"_s, Qt::CaseInsensitive);
}

bool PanelTypes::acceptsExtensionOf(const QString& fileName) const
{
    return m_extensions.contains(QFileInfo(fileName).suffix(), Qt::CaseInsensitive);
}

bool PanelTypes::acceptsClassicTypeOf(const QString& path) const
{
    if (!hasClassicTypes()) {
        return false;
    }
    const std::optional<quint32> code = FileTypes::hfsTypeCode(path);
    return code && m_classicTypes.contains(FileTypes::fileTypeForHFSTypeCode(*code));
}

bool PanelTypes::accepts(const QString& path) const
{
    return acceptsAll() || acceptsExtensionOf(path) || acceptsClassicTypeOf(path);
}
