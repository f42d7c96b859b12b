#include "SoundKinds.h"

#include <QFileInfo>

#include <FileTypes.h>

using namespace Qt::StringLiterals;

namespace {

QStringList panelExtensions()
{
    return {u"aif"_s, u"aiff"_s, u"mov"_s, u"wav"_s, u"m4a"_s, u"mp3"_s, u"sfil"_s};
}

} // namespace

QStringList SoundKinds::openPanelTypes()
{
    return panelExtensions() << FileTypes::fileTypeForHFSTypeCode(FileTypes::typeCode("SFIL"));
}

bool SoundKinds::folderExists(const QString& path)
{
    return QFileInfo(path).isDir();
}

DragOperation SoundKinds::dropOperation(const std::optional<QUrl>& url)
{
    if (!url || !url->isLocalFile()) {
        return DragOperation::None;
    }
    // A folder dragged as "Boings/" is the folder "Boings".
    const QString name = url->adjusted(QUrl::StripTrailingSlash).fileName();
    const qsizetype dot = name.lastIndexOf(u'.');
    // A dot that begins the name begins no extension.
    const QString extension = dot > 0 ? name.mid(dot + 1) : QString();
    return extension.isEmpty() || panelExtensions().contains(extension) ? DragOperation::Copy : DragOperation::None;
}
