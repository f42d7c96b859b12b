// SPDX-License-Identifier: MIT
#include "FileStamp.h"

#include <QFile>

#include <sys/stat.h>

namespace {

qint64 nanoseconds(const timespec& time)
{
    return qint64(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

} // namespace

std::optional<FileStamp> FileStamp::of(const QString& path)
{
    return of(QFile::encodeName(path));
}

std::optional<FileStamp> FileStamp::of(const QByteArray& path)
{
    struct stat status = {};
    if (::stat(path.constData(), &status) != 0) {
        return std::nullopt;
    }
    return FileStamp{.device = status.st_dev,
        .inode = status.st_ino,
        .size = status.st_size,
        .modified = nanoseconds(status.st_mtim),
        .changed = nanoseconds(status.st_ctim)};
}
