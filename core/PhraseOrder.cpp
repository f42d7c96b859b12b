// SPDX-License-Identifier: MIT
#include "PhraseOrder.h"

#include "EntryScan.h"

#include <algorithm>
#include <array>
#include <compare>
#include <numeric>
#include <utility>
#include <vector>

using PropertyList::Type;
using PropertyList::Value;

namespace {

/// What an entry is compared by, looked up once: absent values first, then numbers, then texts. Views the entry's text.
struct SortKey
{
    enum class Kind { Absent, Number, Text };

    Kind kind = Kind::Absent;
    double number = 0;
    QStringView text = {};

    std::weak_ordering compare(const SortKey& other, Qt::CaseSensitivity sensitivity) const
    {
        if (kind != other.kind) {
            return kind <=> other.kind;
        }
        // Not-a-number has a place of its own, too.
        return kind == Kind::Number ? std::weak_order(number, other.number)
                                    : text.compare(other.text, sensitivity) <=> 0;
    }
};

/// An entry on its way to its place. The digest, the first characters in which the texts differ as one number, decides
/// most comparisons without touching the texts; it is 0 for what comes before all texts.
struct Position
{
    quint64 digest;
    size_t index;
};

char16_t folded(QChar character, Qt::CaseSensitivity sensitivity)
{
    return (sensitivity == Qt::CaseSensitive ? character : character.toCaseFolded()).unicode();
}

/// How many characters all texts begin with in common.
qsizetype commonLength(const std::vector<SortKey>& keys, Qt::CaseSensitivity sensitivity)
{
    QStringView common;
    const auto isSame = [sensitivity](QChar left, QChar right) {
        return left == right || folded(left, sensitivity) == folded(right, sensitivity);
    };
    for (const SortKey& key : keys) {
        if (key.kind != SortKey::Kind::Text) {
            continue;
        }
        if (common.isNull()) {
            common = key.text;
        }
        const auto end = std::mismatch(common.begin(), common.end(), key.text.begin(), key.text.end(), isSame).first;
        common = common.first(end - common.begin());
    }
    const bool endsInsideCharacter = !common.isEmpty() && common.back().isHighSurrogate();
    return common.size() - (endsInsideCharacter ? 1 : 0);
}

/// Ends with the first surrogate: what follows belongs to the same character, and only a comparison of texts knows its
/// order.
quint64 digest(const SortKey& key, qsizetype from, Qt::CaseSensitivity sensitivity)
{
    constexpr qsizetype units = sizeof(quint64) / sizeof(char16_t);
    quint64 result = 0;
    bool isOver = false;
    for (qsizetype i = from; i < from + units; ++i) {
        const bool isRead = !isOver && i < key.text.size();
        result = (result << 16) | (isRead ? folded(key.text[i], sensitivity) : 0U);
        isOver = !isRead || key.text[i].isSurrogate();
    }
    return result;
}

bool isNumber(const Value& value)
{
    return value.type() == Type::Integer || value.type() == Type::Real || value.type() == Type::Boolean;
}

SortKey sortKey(const Value* value, PhraseOrder::Comparison comparison)
{
    SortKey result;
    if (value == nullptr) {
        return result;
    }
    if (value->type() == Type::String) {
        result.kind = SortKey::Kind::Text;
        result.text = value->stringView();
    } else if (comparison == PhraseOrder::Comparison::Natural && isNumber(*value)) {
        result.kind = SortKey::Kind::Number;
        result.number = value->doubleValue();
    }
    return result;
}

std::vector<SortKey> sortKeys(const PropertyList::Array& entries, QStringView key, PhraseOrder::Comparison comparison)
{
    std::vector<SortKey> keys(size_t(entries.size()));
    EntryScan::forEachRow(entries, key, [&keys, comparison](qsizetype row, const EntryScan::Row& entry) {
        keys[size_t(row)] = sortKey(entry.value, comparison);
    });
    return keys;
}

/// Sorts by the digests, stably and without a comparison: by one byte of them after the other, the most significant
/// one last. Comparisons of what is in no order cost most by being guessed wrong.
void sortByDigest(std::vector<Position>& positions)
{
    constexpr size_t bytes = sizeof(quint64);
    constexpr size_t byteValues = 256;
    const auto byteOf = [](quint64 digest, size_t number) { return size_t((digest >> (8 * number)) & 0xFF); };
    std::array<std::array<size_t, byteValues>, bytes> counts{};
    for (const Position& position : positions) {
        for (size_t number = 0; number < bytes; ++number) {
            ++counts[number][byteOf(position.digest, number)];
        }
    }
    std::vector<Position> sorted(positions.size());
    for (size_t number = 0; number < bytes; ++number) {
        auto& places = counts[number];
        const bool isSameInAll = std::ranges::find(places, positions.size()) != places.end();
        if (isSameInAll) {
            continue;
        }
        std::exclusive_scan(places.begin(), places.end(), places.begin(), size_t(0));
        for (const Position& position : positions) {
            sorted[places[byteOf(position.digest, number)]++] = position;
        }
        positions.swap(sorted);
    }
}

/// The entries as they are, to be sorted by ascending digest.
std::vector<Position> positionsOf(
    const std::vector<SortKey>& keys, Qt::CaseSensitivity sensitivity, Qt::SortOrder order)
{
    const qsizetype common = commonLength(keys, sensitivity);
    std::vector<Position> positions;
    positions.reserve(keys.size());
    for (size_t i = 0; i < keys.size(); ++i) {
        const quint64 ascending = digest(keys[i], common, sensitivity);
        positions.push_back({order == Qt::AscendingOrder ? ascending : ~ascending, i});
    }
    return positions;
}

/// Sorts those of equal digest among positions that are sorted by it.
template <typename Comparison>
void sortTies(std::vector<Position>& positions, const Comparison& isBefore)
{
    for (auto first = positions.begin(); first != positions.end();) {
        const auto last = std::find_if(first, positions.end(),
            [digest = first->digest](const Position& position) { return position.digest != digest; });
        std::sort(first, last, isBefore);
        first = last;
    }
}

} // namespace

void PhraseOrder::sort(PropertyList::Array& entries, QStringView key, Comparison comparison, Qt::SortOrder order)
{
    const std::vector<SortKey> keys = sortKeys(entries, key, comparison);
    const auto sensitivity = comparison == Comparison::Natural ? Qt::CaseSensitive : Qt::CaseInsensitive;
    std::vector<Position> positions = positionsOf(keys, sensitivity, order);
    // Of equal entries the first stays the first: there are none that are neither before nor behind each other.
    const auto isBefore = [&keys, sensitivity, order](const Position& left, const Position& right) {
        if (left.digest != right.digest) {
            return left.digest < right.digest;
        }
        const bool isAscending = order == Qt::AscendingOrder;
        const SortKey& first = keys[(isAscending ? left : right).index];
        const auto ordering = first.compare(keys[(isAscending ? right : left).index], sensitivity);
        return std::is_eq(ordering) ? left.index < right.index : std::is_lt(ordering);
    };
    // A document is stored in order, so that most sorts find nothing to do.
    if (std::ranges::is_sorted(positions, isBefore)) {
        return;
    }
    sortByDigest(positions);
    sortTies(positions, isBefore);

    std::vector<size_t> indices(positions.size());
    std::ranges::transform(positions, indices.begin(), &Position::index);
    entries.reorder(indices);
}
