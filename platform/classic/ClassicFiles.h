// SPDX-License-Identifier: MIT
#pragma once

#include "ResourceFile.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>

/// Files named the classic way: by a volume number, a folder identifier and a name ("Inside Macintosh: Files", chapter
/// 2).
///
/// A volume's number follows from its mount point. A folder's identifier follows from its inode and is remembered, with
/// its path, in the preferences domain "ClassicFolders" of the product: a record that was made in one process
/// leads back to its file in every later one, as long as the folder stays where it is.
namespace ClassicFiles {

constexpr qint16 badNameError = -37;
constexpr qint16 folderNotFoundError = -120;

/// Stands in a stored record for the volume of the Preferences folder.
constexpr qint16 preferencesVolumePlaceholder = -32763;

/// The folder that holds the root folder of a volume: a record in it names the volume itself.
constexpr qint32 parentOfRoot = 1;
constexpr qint32 rootFolder = 2;

struct Folder
{
    qint16 volume = 0;
    qint32 identifier = 0;

    bool operator==(const Folder&) const = default;
};

/// A file or folder. The name is Mac OS Roman, at most 63 bytes, with ":" and "/" exchanged; a name that does not fit
/// is shortened and carries the file's inode after a "#", by which it is found again.
struct FileRecord
{
    static constexpr qsizetype storedSize = 70;
    static constexpr qsizetype longestName = 63;

    Folder folder;
    QByteArray name;

    /// Reads the 70 bytes of a stored record (big-endian); nothing when there are fewer or the name is too long.
    static std::optional<FileRecord> fromStored(QByteArrayView bytes);

    bool operator==(const FileRecord&) const = default;
};

/// A classic name may hold "/" but not ":", a file name here the other way round.
QString withSeparatorsExchanged(QString name);

/// The user's Preferences folder, which is the folder of the preferences domains; nothing while it does not exist.
std::optional<Folder> findPreferencesFolder();

/// The outcome of makeRecord(): noErr; fileNotFoundError with a record of a file yet to be made;
/// folderNotFoundError or badNameError without one.
struct RecordResult
{
    FileRecord record;
    qint16 error = ResourceFile::noErr;
};

RecordResult makeRecord(const Folder& folder, const QByteArray& name);

/// The file record of the existing file or folder at @p path. A link at the end of the path is not followed.
std::optional<FileRecord> recordForPath(const QString& path);

/// The absolute path of a record whose folder exists, whether the file itself does or not.
std::optional<QString> pathOf(const FileRecord& record);

/// Opens the resource fork of a file as ResourceFile::open() does.
qint16 openResourceFile(const FileRecord& record, ResourceFile::Access access);

} // namespace ClassicFiles
