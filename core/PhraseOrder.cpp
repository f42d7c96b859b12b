#include "PhraseOrder.h"

#include <algorithm>
#include <compare>
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
    /// The first characters of the text as one number, which decides most comparisons without touching the text.
    quint64 prefix = 0;
    QString text;
    qsizetype index = 0;

    bool operator<(const SortKey& other) const
    {
        if (kind != other.kind) {
            return kind < other.kind;
        }
        if (kind == Kind::Number) {
            return number < other.number;
        }
        return prefix != other.prefix ? prefix < other.prefix : text < other.text;
    }
};

quint64 prefixOf(QStringView text)
{
    constexpr qsizetype units = sizeof(quint64) / sizeof(char16_t);
    quint64 prefix = 0;
    for (qsizetype i = 0; i < units; ++i) {
        prefix = (prefix << 16) | (i < text.size() ? text[i].unicode() : 0U);
    }
    return prefix;
}

bool isNumber(const Value& value)
{
    return value.type() == Type::Integer || value.type() == Type::Real || value.type() == Type::Boolean;
}

SortKey sortKey(const Value& entry, qsizetype index, QStringView key, PhraseOrder::Comparison comparison)
{
    SortKey result;
    result.index = index;
    const PropertyList::DictionaryPointer dictionary = entry.dictionary();
    const Value* value = dictionary ? std::as_const(*dictionary).find(key) : nullptr;
    if (value == nullptr) {
        return result;
    }
    const bool isNatural = comparison == PhraseOrder::Comparison::Natural;
    if (value->type() == Type::String) {
        result.kind = SortKey::Kind::Text;
        result.text = isNatural ? value->string() : value->string().toCaseFolded();
        result.prefix = prefixOf(result.text);
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
    for (qsizetype i = 0; i < entries.size(); ++i) {
        keys.push_back(sortKey(entries.at(i), i, key, comparison));
    }
    // A document is stored in order, so that most sorts find nothing to do.
    if (std::ranges::is_sorted(keys, std::less<>())) {
        return;
    }
    std::stable_sort(keys.begin(), keys.end());

    std::vector<Value> sorted;
    sorted.reserve(keys.size());
    for (const SortKey& position : keys) {
        sorted.push_back(entries.at(position.index));
    }
    std::ranges::move(sorted, entries.begin());
}
