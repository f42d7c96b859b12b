// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/Result.h>

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <memory>
#include <span>

/// The bytes that a decoder reads: a regular file, or a block of memory.
class SoundInput final
{
    Q_DISABLE_COPY_MOVE(SoundInput)

public:
    /// The file at @p path, links followed. Whatever is no regular file is refused; nothing is waited for (a FIFO
    /// without a writer, a device).
    static Result<std::unique_ptr<SoundInput>> file(const QString& path);
    static std::unique_ptr<SoundInput> memory(QByteArray bytes);

    ~SoundInput();

    qint64 size() const { return m_size; }

    qint64 position() const { return m_position; }

    /// Moves to @p position, at most behind the last byte; false when it is negative.
    bool seek(qint64 position);
    /// Reads from the position on and advances it. The number of bytes read, 0 at the end and where a limit is used up,
    /// -1 on an error.
    int read(std::span<quint8> target);

    /// Lets @p bytes more be read, then every read finds the end. There is no limit at first.
    void setReadLimit(qint64 bytes) { m_readLimit = bytes; }

    void removeReadLimit();

private:
    SoundInput(int descriptor, qint64 size);

    int m_descriptor;
    QByteArray m_bytes;
    qint64 m_size;
    qint64 m_position = 0;
    qint64 m_readLimit;
};
