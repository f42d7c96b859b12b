// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QtEndian>

#include <algorithm>

/// A stretch of bytes inside a file: offset and length in bytes.
struct ByteRange
{
    quint64 offset = 0;
    quint64 length = 0;

    /// What of it lies in a file of @p size bytes.
    ByteRange within(quint64 size) const noexcept
    {
        const quint64 begin = std::min(offset, size);
        return {begin, std::min(length, size - begin)};
    }

    bool operator==(const ByteRange&) const = default;
};

/// Bytes of unknown origin that are read at offsets of unknown origin.
///
/// No access goes past the end, whatever the offset: a number that does not lie inside completely reads as 0, a slice
/// is cut off. A reader checks contains() for each structure once and then reads its fields.
class BoundedBytes final
{
public:
    /// Views @p bytes, which must outlive this object.
    explicit BoundedBytes(QByteArrayView bytes) noexcept
        : m_bytes(bytes)
    {
    }

    quint64 size() const noexcept { return quint64(m_bytes.size()); }

    bool contains(quint64 offset, quint64 length) const noexcept
    {
        return offset <= size() && length <= size() - offset;
    }

    /// The big-endian number at @p offset; 0 outside.
    template <typename Number>
    Number big(quint64 offset) const noexcept
    {
        return contains(offset, sizeof(Number)) ? qFromBigEndian<Number>(m_bytes.data() + offset) : Number(0);
    }

    /// The big-endian number of the @p width bytes (at most 8) at @p offset; 0 outside.
    quint64 big(quint64 offset, quint64 width) const noexcept
    {
        quint64 number = 0;
        for (const char byte : contains(offset, width) ? slice(offset, width) : QByteArrayView()) {
            number = number << 8 | quint8(byte);
        }
        return number;
    }

    /// The little-endian number at @p offset; 0 outside.
    template <typename Number>
    Number little(quint64 offset) const noexcept
    {
        return contains(offset, sizeof(Number)) ? qFromLittleEndian<Number>(m_bytes.data() + offset) : Number(0);
    }

    /// As many of the @p length bytes at @p offset as there are.
    QByteArrayView slice(quint64 offset, quint64 length) const noexcept
    {
        const quint64 begin = std::min(offset, size());
        return m_bytes.sliced(qsizetype(begin), qsizetype(std::min(length, size() - begin)));
    }

    /// The bytes of the length-prefixed string at @p offset, without the length byte; cut off at the end.
    QByteArrayView pascalString(quint64 offset) const noexcept { return slice(offset + 1, big<quint8>(offset)); }

private:
    QByteArrayView m_bytes;
};
