// SPDX-License-Identifier: MIT
#include "PhraseOrder.h"

#include <algorithm>
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

    bool isBefore(const SortKey& other, Qt::CaseSensitivity sensitivity) const
    {
        if (kind != other.kind) {
            return kind < other.kind;
        }
        return kind == Kind::Number ? number < other.number : text.compare(other.text, sensitivity) < 0;
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

SortKey sortKey(const Value& entry, QStringView key, PhraseOrder::Comparison comparison)
{
    SortKey result;
    const PropertyList::Dictionary* dictionary = entry.dictionaryInPlace();
    const Value* value = dictionary != nullptr ? dictionary->find(key) : nullptr;
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

} // namespace

void PhraseOrder::sort(PropertyList::Array& entries, QStringView key, Comparison comparison, Qt::SortOrder order)
{
    std::vector<SortKey> keys;
    keys.reserve(size_t(entries.size()));
    for (const Value& entry : std::as_const(entries)) {
        keys.push_back(sortKey(entry, key, comparison));
    }
    const auto sensitivity = comparison == Comparison::Natural ? Qt::CaseSensitive : Qt::CaseInsensitive;
    const qsizetype common = commonLength(keys, sensitivity);
    std::vector<Position> positions;
    positions.reserve(keys.size());
    for (size_t i = 0; i < keys.size(); ++i) {
        positions.push_back({digest(keys[i], common, sensitivity), i});
    }

    const auto isLess = [&keys, sensitivity](const Position& left, const Position& right) {
        return left.digest != right.digest ? left.digest < right.digest
                                           : keys[left.index].isBefore(keys[right.index], sensitivity);
    };
    const auto isBefore = [&isLess, order](const Position& left, const Position& right) {
        return order == Qt::AscendingOrder ? isLess(left, right) : isLess(right, left);
    };
    // A document is stored in order, so that most sorts find nothing to do.
    if (std::ranges::is_sorted(positions, isBefore)) {
        return;
    }
    std::ranges::stable_sort(positions, isBefore);

    std::vector<size_t> indices(positions.size());
    std::ranges::transform(positions, indices.begin(), &Position::index);
    entries.reorder(indices);
}
