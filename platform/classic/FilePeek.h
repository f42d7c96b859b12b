// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/BoundedBytes.h>

#include <QByteArray>
#include <QFile>
#include <QString>

/// Reads parts of a regular file without ever waiting: a pipe, a device, or a folder does not open.
class FilePeek final
{
    Q_DISABLE_COPY_MOVE(FilePeek)

public:
    enum class Links { Follow, Refuse };

    /// Opens the file at @p path for reading. With Links::Refuse a symbolic link does not open.
    FilePeek(const QString& path, Links links);
    ~FilePeek() = default;

    bool isOpen() const { return m_file.isOpen(); }

    /// In bytes; 0 when not open.
    quint64 size() const { return quint64(m_file.size()); }

    /// As many bytes of @p range as there are; none when not open.
    QByteArray read(const ByteRange& range) const;

    /// The value of the extended attribute @p name of the file at @p path (links followed), at most 64 KiB; empty where
    /// there is none.
    static QByteArray extendedAttribute(const QString& path, const char* name);

private:
    mutable QFile m_file;
};
