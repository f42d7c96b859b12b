// SPDX-License-Identifier: MIT
#include "SoundKinds.h"

#include <platform/bytes/PathNames.h>
#include <platform/classic/FileTypes.h>

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

QStringList panelExtensions()
{
    return {u"aif"_s, u"aiff"_s, u"mov"_s, u"wav"_s, u"m4a"_s, u"mp3"_s, u"sfil"_s};
}

} // namespace

QStringList SoundKinds::openPanelTypes()
{
    return panelExtensions() << FileTypes::fileTypeForHFSTypeCode(fourCharCode("SFIL"));
}

bool SoundKinds::folderExists(const QString& path)
{
    return QFileInfo(path).isDir();
}

Qt::DropAction SoundKinds::dropOperation(const std::optional<QString>& path)
{
    if (!path) {
        return Qt::IgnoreAction;
    }
    const QStringView name = lastPathComponent(*path);
    const qsizetype dot = name.lastIndexOf(u'.');
    // A dot that begins the name begins no extension.
    const QStringView extension = dot > 0 ? name.sliced(dot + 1) : QStringView();
    return extension.isEmpty() || panelExtensions().contains(extension) ? Qt::CopyAction : Qt::IgnoreAction;
}
