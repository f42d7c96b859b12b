// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/BoundedBytes.h>

#include <QByteArrayView>

#include <optional>
#include <vector>

/// The AppleDouble and AppleSingle containers (RFC 1740, appendices A and B), versions 1 and 2: a header with a table
/// of entries, each a stretch of the file. An AppleDouble file stands beside the plain file that holds the data; an
/// AppleSingle file holds the data too.
class AppleDouble final
{
public:
    /// Entry numbers.
    static constexpr quint32 resourceFork = 2;
    static constexpr quint32 finderInfo = 9;

    /// As much of a file's beginning as parse() ever looks at.
    static constexpr quint64 maximumHeaderSize = 26 + 12 * 256;

    /// Reads the header from the first bytes of a file that is @p fileSize bytes long. Nothing when they are neither
    /// container. Entries are cut off at the end of the file; at most 256 are read.
    static std::optional<AppleDouble> parse(QByteArrayView head, quint64 fileSize);

    /// Where the first entry with the number @p id lies that is not empty; nothing when there is none.
    std::optional<ByteRange> entry(quint32 id) const;

private:
    struct Entry
    {
        quint32 id = 0;
        ByteRange range;
    };

    std::vector<Entry> m_entries;
};
