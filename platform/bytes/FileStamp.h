// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// Which state of a file was read: two equal stamps mean that the file has not been replaced or changed in between.
struct FileStamp
{
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = 0;
    /// Nanoseconds since 1970, as all times here: of the last change of the content ...
    qint64 modified = 0;
    /// ... and of the last change of anything, which no program can set.
    qint64 changed = 0;

    bool operator==(const FileStamp&) const = default;

    /// The stamp of the file at @p path, links followed. Nothing when there is none.
    static std::optional<FileStamp> of(const QString& path);
    /// The same for a path in the file system's encoding, for those who ask often.
    static std::optional<FileStamp> of(const QByteArray& path);
};
