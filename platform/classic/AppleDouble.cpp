// SPDX-License-Identifier: MIT
#include "AppleDouble.h"

#include <algorithm>

namespace {

constexpr quint32 magicDouble = 0x00051607;
constexpr quint32 magicSingle = 0x00051600;
constexpr quint64 entryTable = 26;
constexpr quint64 entrySize = 12;
constexpr quint64 maximumEntries = 256;

} // namespace

std::optional<AppleDouble> AppleDouble::parse(QByteArrayView head, quint64 fileSize)
{
    const BoundedBytes bytes(head);
    const auto magic = bytes.big<quint32>(0);
    if (!bytes.contains(0, entryTable) || (magic != magicDouble && magic != magicSingle)) {
        return std::nullopt;
    }
    AppleDouble container;
    const quint64 count = std::min<quint64>(bytes.big<quint16>(24), maximumEntries);
    for (quint64 at = entryTable; at < entryTable + count * entrySize && bytes.contains(at, entrySize);
         at += entrySize) {
        const ByteRange range{bytes.big<quint32>(at + 4), bytes.big<quint32>(at + 8)};
        container.m_entries.push_back({bytes.big<quint32>(at), range.within(fileSize)});
    }
    return container;
}

std::optional<ByteRange> AppleDouble::entry(quint32 id) const
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
        [id](const Entry& entry) { return entry.id == id && entry.range.length > 0; });
    return found == m_entries.end() ? std::nullopt : std::optional(found->range);
}
