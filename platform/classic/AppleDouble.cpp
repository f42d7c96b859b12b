// SPDX-License-Identifier: MIT
#include "AppleDouble.h"

#include <algorithm>

using namespace Qt::StringLiterals;

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
    container.m_kind = magic == magicSingle ? Kind::Single : Kind::Double;
    const quint64 count = std::min<quint64>(bytes.big<quint16>(24), maximumEntries);
    for (quint64 i = 0; i < count; ++i) {
        const quint64 at = entryTable + i * entrySize;
        if (!bytes.contains(at, entrySize)) {
            container.m_warnings.append(u"the entry table ends after %1 of %2 entries"_s.arg(i).arg(count));
            break;
        }
        container.addEntry(
            {bytes.big<quint32>(at), {bytes.big<quint32>(at + 4), bytes.big<quint32>(at + 8)}}, fileSize);
    }
    return container;
}

void AppleDouble::addEntry(const Entry& entry, quint64 fileSize)
{
    const auto& [offset, length] = entry.range;
    if (offset >= fileSize && length > 0) {
        m_warnings.append(u"entry %1 begins at byte %2, behind the end"_s.arg(entry.id).arg(offset));
        return;
    }
    const quint64 present = std::min(length, fileSize - std::min(offset, fileSize));
    if (present < length) {
        m_warnings.append(u"entry %1 is cut off after %2 of %3 bytes"_s.arg(entry.id).arg(present).arg(length));
    }
    m_entries.push_back({entry.id, {offset, present}});
}

std::optional<ByteRange> AppleDouble::entry(quint32 id) const
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
        [id](const Entry& entry) { return entry.id == id && entry.range.length > 0; });
    return found == m_entries.end() ? std::nullopt : std::optional(found->range);
}
