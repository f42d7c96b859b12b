// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/BoundedBytes.h>

#include <QByteArrayView>
#include <QStringList>

#include <optional>
#include <vector>

/// The AppleDouble and AppleSingle containers (RFC 1740, appendices A and B), versions 1 and 2: a header with a table
/// of entries, each a stretch of the file. An AppleDouble file stands beside the plain file that holds the data; an
/// AppleSingle file holds the data too.
class AppleDouble final
{
public:
    enum class Kind { Double, Single };

    /// Entry numbers.
    static constexpr quint32 dataFork = 1;
    static constexpr quint32 resourceFork = 2;
    static constexpr quint32 finderInfo = 9;

    /// As much of a file's beginning as parse() ever looks at.
    static constexpr quint64 maximumHeaderSize = 26 + 12 * 256;

    /// Reads the header from the first bytes of a file that is @p fileSize bytes long. Nothing when they are neither
    /// container. Entries that begin behind the end of the file are left out, others are cut off there; at most 256 are
    /// read.
    static std::optional<AppleDouble> parse(QByteArrayView head, quint64 fileSize);

    Kind kind() const noexcept { return m_kind; }

    /// Where the first entry with the number @p id lies; nothing when there is none or it is empty.
    std::optional<ByteRange> entry(quint32 id) const;

    /// What was odd: entries that are cut off or left out.
    const QStringList& warnings() const noexcept { return m_warnings; }

private:
    struct Entry
    {
        quint32 id = 0;
        ByteRange range;
    };

    void addEntry(const Entry& entry, quint64 fileSize);

    Kind m_kind = Kind::Double;
    std::vector<Entry> m_entries;
    QStringList m_warnings;
};
