// SPDX-License-Identifier: MIT
#include "ClassicFolders.h"

#include <platform/storage/Preferences.h>
#include <product/Product.h>

#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

const QString domain = QStringLiteral(PRODUCT_IDENTIFIER ".ClassicFolders");

/// Volumes have the numbers -1 to -32000, away from the placeholders below.
constexpr int volumeNumbers = 32000;
/// Identifiers below are reserved for the system.
constexpr qint32 firstIdentifier = 16;
constexpr qint32 identifierMask = 0x7FFFFFFF;

QString keyOf(const ClassicFiles::Folder& folder)
{
    return QString::number(folder.volume) + u'/' + QString::number(folder.identifier);
}

QString rememberedPath(const ClassicFiles::Folder& folder)
{
    return Preferences::copyValue(keyOf(folder), domain).string();
}

void remember(const ClassicFiles::Folder& folder, const QString& path)
{
    if (rememberedPath(folder) != path) {
        Preferences::setValue(keyOf(folder), path, domain);
        // A failure is logged there; the identifier is then good for this process only.
        Preferences::synchronize(domain);
    }
}

qint16 volumeNumber(const QString& mountPoint)
{
    return qint16(-1 - qChecksum(mountPoint.toUtf8()) % volumeNumbers);
}

/// What the identifier of a folder is tried with first: its inode, folded where it is too large.
qint32 identifierForInode(quint64 inode)
{
    const auto folded = qint32((inode ^ (inode >> 31)) & identifierMask);
    return folded < firstIdentifier ? folded + firstIdentifier : folded;
}

} // namespace

quint64 ClassicFolders::inodeOf(const QString& path)
{
    struct stat information = {};
    return lstat(QFile::encodeName(path).constData(), &information) == 0 ? information.st_ino : 0;
}

std::optional<ClassicFiles::Folder> ClassicFolders::identify(const QString& path)
{
    const QFileInfo info(path);
    if (!info.isDir()) {
        return std::nullopt;
    }
    const QString place = info.canonicalFilePath();
    const QString mountPoint = QStorageInfo(place).rootPath();
    ClassicFiles::Folder folder{volumeNumber(mountPoint), ClassicFiles::rootFolder};
    remember(folder, mountPoint);
    if (place == mountPoint) {
        return folder;
    }
    folder.identifier = identifierForInode(inodeOf(place));
    // An identifier is taken as long as the other folder is there.
    while (pathOf(folder).value_or(place) != place) {
        folder.identifier = folder.identifier == identifierMask ? firstIdentifier : folder.identifier + 1;
    }
    remember(folder, place);
    return folder;
}

std::optional<QString> ClassicFolders::pathOf(const ClassicFiles::Folder& folder)
{
    const QString path = rememberedPath(folder);
    return !path.isEmpty() && QFileInfo(path).isDir() ? std::optional(path) : std::nullopt;
}
