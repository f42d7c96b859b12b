// SPDX-License-Identifier: MIT
#include "RegularFile.h"

#include <QFileInfo>

#include <sys/mman.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// To get memory of many megabytes in small pages takes as long as to read a file into it.
void askForLargePages(QByteArray& bytes)
{
    constexpr quintptr pageSize = 4096;
    constexpr qsizetype smallest = 4 << 20;
    if (bytes.size() >= smallest) {
        const auto begin = (reinterpret_cast<quintptr>(bytes.data()) + pageSize - 1) & ~(pageSize - 1);
        const auto end = reinterpret_cast<quintptr>(bytes.data()) + quintptr(bytes.size());
        // Advice only: where there are none, nothing is lost.
        madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
    }
}

} // namespace

Result<std::unique_ptr<QFile>> RegularFile::open(const QString& path)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile()) {
        return Failure{u"it is not an ordinary file"_s};
    }
    auto file = std::make_unique<QFile>(path);
    if (!file->open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return Failure{file->errorString()};
    }
    return file;
}

Result<QByteArray> RegularFile::read(const QString& path, qint64 maximumSize)
{
    const Result<std::unique_ptr<QFile>> file = open(path);
    if (!file) {
        return Failure{file.error()};
    }
    if ((*file)->size() > maximumSize) {
        return Failure{u"it has more than %1 bytes"_s.arg(maximumSize)};
    }
    QByteArray bytes((*file)->size(), Qt::Uninitialized);
    askForLargePages(bytes);
    bytes.truncate(std::max<qint64>((*file)->read(bytes.data(), bytes.size()), 0));
    // What it has grown by meanwhile; or all of a file that does not tell its size.
    bytes += (*file)->readAll();
    if ((*file)->error() != QFileDevice::NoError) {
        return Failure{(*file)->errorString()};
    }
    return bytes;
}
