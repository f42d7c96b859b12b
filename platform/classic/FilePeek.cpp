// SPDX-License-Identifier: MIT
#include "FilePeek.h"

#include <QFileInfo>

#include <sys/xattr.h>

#include <algorithm>

namespace {

/// The kernel's own limit.
constexpr qsizetype largestAttribute = 65536;

} // namespace

FilePeek::FilePeek(const QString& path, Links links)
    : m_file(path)
{
    const QFileInfo info(path);
    if (info.isFile() && (links == Links::Follow || !info.isSymLink())) {
        m_file.open(QIODevice::ReadOnly | QIODevice::ExistingOnly | QIODevice::Unbuffered);
    }
}

QByteArray FilePeek::read(const ByteRange& range) const
{
    const quint64 end = isOpen() ? size() : 0;
    if (range.offset >= end || !m_file.seek(qint64(range.offset))) {
        return {};
    }
    return m_file.read(qint64(std::min(range.length, end - range.offset)));
}

QByteArray FilePeek::extendedAttribute(const QString& path, const char* name)
{
    const QByteArray encodedPath = QFile::encodeName(path);
    const ssize_t size = getxattr(encodedPath.constData(), name, nullptr, 0);
    if (size <= 0 || size > largestAttribute) {
        return {};
    }
    QByteArray value(size, Qt::Uninitialized);
    const ssize_t read = getxattr(encodedPath.constData(), name, value.data(), size_t(size));
    value.resize(std::max<ssize_t>(read, 0));
    return value;
}
