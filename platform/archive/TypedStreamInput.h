// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QtEndian>

#include <optional>
#include <vector>

namespace TypedStream {

/// What archives are made of below values and objects: marks, numbers and strings. Reading goes forward from the
/// beginning; what cannot be read answers false, keeps the first reason, and leaves the place where it is useless to go
/// on.
class Input final
{
public:
    explicit Input(QByteArrayView bytes)
        : m_bytes(bytes)
    {
    }

    /// The marks that stand where a number or a thing may stand.
    enum class Mark : unsigned char { New = 0x84, Nil = 0x85, EndOfObject = 0x86 };

    bool hasByte() const { return m_at < m_bytes.size(); }

    /// The number of bytes not read yet.
    qsizetype remaining() const { return m_bytes.size() - m_at; }

    /// The signature, which tells the byte order, and the version of the system that wrote the archive.
    bool readHeader();
    /// Goes past @p mark where it is what comes next.
    bool take(Mark mark);
    /// A number of any width behind its mark, or a small one in one byte.
    bool readInteger(qint64& number);
    /// A float or, for the type 'd', a double; whole numbers may be written as integers.
    bool readReal(char type, double& number);
    /// The number of an entry in a table: numbers count from -110, the lowest that fits into a byte beside the marks.
    bool readReference(size_t tableSize, size_t& number);
    /// Bytes without a mark before them.
    bool readRaw(qint64 length, QByteArray& bytes);
    /// Nil, or bytes behind their length.
    bool readUnsharedString(std::optional<QByteArray>& text);
    /// The same, or a reference to one read before.
    bool readSharedString(std::optional<QByteArray>& text);

    /// A number that is as wide in the archive as here, in the archive's byte order.
    template <typename Number>
    bool readFixed(Number& number)
    {
        if (remaining() < qsizetype(sizeof(Number))) {
            return fail(u"the archive is cut off");
        }
        const char* at = m_bytes.data() + m_at;
        number = m_isLittleEndian ? qFromLittleEndian<Number>(at) : qFromBigEndian<Number>(at);
        m_at += qsizetype(sizeof(Number));
        return true;
    }

    /// Keeps the reason with the place, unless there is one already; answers false.
    bool fail(QStringView what);

    /// The reason for the first failure, with the byte offset; empty where there was none.
    QString error() const { return m_error; }

private:
    unsigned char head() const { return hasByte() ? static_cast<unsigned char>(m_bytes[m_at]) : 0; }

    QByteArrayView m_bytes;
    qsizetype m_at = 0;
    bool m_isLittleEndian = true;
    std::vector<QByteArray> m_strings;
    QString m_error;
};

} // namespace TypedStream
