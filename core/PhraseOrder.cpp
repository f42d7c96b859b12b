#include "PhraseOrder.h"

#include <algorithm>
#include <utility>
#include <vector>

using PropertyList::Type;
using PropertyList::Value;

namespace {

/// What an entry is compared by, worked out once: absent values first, then numbers, then texts.
struct SortKey
{
    enum class Kind { Absent, Number, Text };

    Kind kind = Kind::Absent;
    double number = 0;
    QString text = {};

    bool operator<(const SortKey& other) const
    {
        if (kind != other.kind) {
            return kind < other.kind;
        }
        return kind == Kind::Number ? number < other.number : text < other.text;
    }
};

/// An entry on its way to its place. The digest, the first characters in which the texts differ as one number, decides
/// most comparisons without touching the keys; it is 0 for what comes before all texts.
struct Position
{
    quint64 digest;
    size_t index;
};

/// How many characters all texts begin with in common.
qsizetype commonLength(const std::vector<SortKey>& keys)
{
    QStringView common;
    for (const SortKey& key : keys) {
        if (key.kind != SortKey::Kind::Text) {
            continue;
        }
        if (common.isNull()) {
            common = key.text;
        }
        const auto end = std::ranges::mismatch(common, key.text).in1;
        common = common.first(end - common.begin());
    }
    return common.size();
}

quint64 digest(const SortKey& key, qsizetype from)
{
    constexpr qsizetype units = sizeof(quint64) / sizeof(char16_t);
    quint64 result = 0;
    for (qsizetype i = from; i < from + units; ++i) {
        result = (result << 16) | (i < key.text.size() ? key.text[i].unicode() : 0U);
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
    const PropertyList::DictionaryPointer dictionary = entry.dictionary();
    const Value* value = dictionary ? std::as_const(*dictionary).find(key) : nullptr;
    if (value == nullptr) {
        return result;
    }
    const bool isNatural = comparison == PhraseOrder::Comparison::Natural;
    if (value->type() == Type::String) {
        result.kind = SortKey::Kind::Text;
        result.text = isNatural ? value->string() : value->string().toCaseFolded();
    } else if (isNatural && isNumber(*value)) {
        result.kind = SortKey::Kind::Number;
        result.number = value->doubleValue();
    }
    return result;
}

} // namespace

void PhraseOrder::sort(PropertyList::Array& entries, QStringView key, Comparison comparison)
{
    std::vector<SortKey> keys;
    keys.reserve(size_t(entries.size()));
    for (const Value& entry : std::as_const(entries)) {
        keys.push_back(sortKey(entry, key, comparison));
    }
    const qsizetype common = commonLength(keys);
    std::vector<Position> positions;
    positions.reserve(keys.size());
    for (size_t i = 0; i < keys.size(); ++i) {
        positions.push_back({digest(keys[i], common), i});
    }

    const auto isBefore = [&keys](const Position& left, const Position& right) {
        return left.digest != right.digest ? left.digest < right.digest : keys[left.index] < keys[right.index];
    };
    // A document is stored in order, so that most sorts find nothing to do.
    if (std::ranges::is_sorted(positions, isBefore)) {
        return;
    }
    std::ranges::stable_sort(positions, isBefore);

    std::vector<Value> sorted;
    sorted.reserve(positions.size());
    for (const Position& position : positions) {
        sorted.push_back(std::move(entries.begin()[qsizetype(position.index)]));
    }
    std::ranges::move(sorted, entries.begin());
}
