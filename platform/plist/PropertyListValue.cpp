// SPDX-License-Identifier: MIT
#include "PropertyListForms.h"

#include <QLocale>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace PropertyList {

namespace {

// Up to here a look at every key is faster than halving.
constexpr size_t linearSearchLimit = 16;

constexpr double twoTo63 = 9223372036854775808.0;
constexpr double twoTo64 = 18446744073709551616.0;

qint64 heldToSigned(double number)
{
    if (std::isnan(number)) {
        return 0;
    }
    if (number >= twoTo63) {
        return std::numeric_limits<qint64>::max();
    }
    return number < -twoTo63 ? std::numeric_limits<qint64>::min() : qint64(number);
}

quint64 heldToUnsigned(double number)
{
    if (number >= twoTo64) {
        return std::numeric_limits<quint64>::max();
    }
    return number > 0 ? quint64(number) : 0;
}

struct DecimalInteger
{
    quint64 magnitude = 0;
    bool negative = false;
};

DecimalInteger leadingInteger(QStringView text)
{
    const auto* at = text.begin();
    while (at != text.end() && at->isSpace()) {
        ++at;
    }
    DecimalInteger result;
    if (at != text.end() && (*at == u'-' || *at == u'+')) {
        result.negative = *at++ == u'-';
    }
    constexpr quint64 limit = std::numeric_limits<quint64>::max();
    for (; at != text.end() && *at >= u'0' && *at <= u'9'; ++at) {
        const quint64 digit = at->unicode() - u'0';
        result.magnitude = result.magnitude > (limit - digit) / 10 ? limit : result.magnitude * 10 + digit;
    }
    return result;
}

qint64 heldToSigned(DecimalInteger integer)
{
    constexpr auto largest = quint64(std::numeric_limits<qint64>::max());
    if (integer.negative) {
        return integer.magnitude > largest ? std::numeric_limits<qint64>::min() : -qint64(integer.magnitude);
    }
    return qint64(std::min(integer.magnitude, largest));
}

double leadingReal(QStringView text)
{
    // Only numbers in digits count here: "infinity" is a word like any other.
    const QByteArray latin = text.trimmed().left(400).toLatin1();
    const std::string_view view(latin.constData(), size_t(latin.size()));
    const size_t digits = view.find_first_not_of("+-.");
    const bool numeric = digits != std::string_view::npos && view[digits] >= '0' && view[digits] <= '9';
    return numeric ? parseReal(view).first : 0;
}

} // namespace

bool Value::Real::operator==(const Real& other) const noexcept
{
    return number == other.number || (std::isnan(number) && std::isnan(other.number));
}

Value::Value(int value) noexcept
    : m_value(qint64(value))
{
}

Value::Value(qint64 value) noexcept
    : m_value(value)
{
}

Value::Value(quint64 value) noexcept
{
    if (value > quint64(std::numeric_limits<qint64>::max())) {
        m_value = value;
    } else {
        m_value = qint64(value);
    }
}

Value::Value(double value, RealSpelling spelling) noexcept
    : m_value(Real{value, spelling})
{
}

Value::Value(QString value) noexcept
    : m_value(std::move(value))
{
}

Value::Value(QByteArray value) noexcept
    : m_value(std::move(value))
{
}

Value::Value(const QDateTime& value)
{
    if (value.isValid()) {
        m_value = value.toUTC();
    }
}

Value::Value(Uid value) noexcept
    : m_value(value)
{
}

Value::Value(ArrayPointer value) noexcept
{
    if (value) {
        m_value = std::move(value);
    }
}

Value::Value(DictionaryPointer value) noexcept
{
    if (value) {
        m_value = std::move(value);
    }
}

Type Value::type() const noexcept
{
    static constexpr std::array types{Type::Null, Type::Boolean, Type::Integer, Type::Integer, Type::Real, Type::String,
        Type::Date, Type::Data, Type::Uid, Type::Array, Type::Dictionary};
    return types[m_value.index()];
}

RealSpelling Value::realSpelling() const noexcept
{
    const auto* real = std::get_if<Real>(&m_value);
    return real != nullptr ? real->spelling : RealSpelling::SeventeenDigits;
}

qint64 Value::integerValue() const
{
    if (const auto* text = std::get_if<QString>(&m_value)) {
        return heldToSigned(leadingInteger(*text));
    }
    if (const auto* real = std::get_if<Real>(&m_value)) {
        return heldToSigned(real->number);
    }
    if (const auto* integer = std::get_if<qint64>(&m_value)) {
        return *integer;
    }
    if (std::holds_alternative<quint64>(m_value)) {
        return std::numeric_limits<qint64>::max();
    }
    const auto* boolean = std::get_if<bool>(&m_value);
    return boolean != nullptr && *boolean ? 1 : 0;
}

qint32 Value::intValue() const
{
    using Limits = std::numeric_limits<qint32>;
    return qint32(std::clamp<qint64>(integerValue(), Limits::min(), Limits::max()));
}

quint64 Value::unsignedIntegerValue() const
{
    if (const auto* text = std::get_if<QString>(&m_value)) {
        const DecimalInteger integer = leadingInteger(*text);
        return integer.negative ? 0 : integer.magnitude;
    }
    if (const auto* real = std::get_if<Real>(&m_value)) {
        return heldToUnsigned(real->number);
    }
    if (const auto* large = std::get_if<quint64>(&m_value)) {
        return *large;
    }
    return quint64(std::max<qint64>(integerValue(), 0));
}

double Value::doubleValue() const
{
    if (const auto* text = std::get_if<QString>(&m_value)) {
        return leadingReal(*text);
    }
    if (const auto* real = std::get_if<Real>(&m_value)) {
        return real->number;
    }
    if (const auto* large = std::get_if<quint64>(&m_value)) {
        return double(*large);
    }
    return double(integerValue());
}

QString Value::textValue() const
{
    switch (type()) {
    case Type::String:
        return string();
    case Type::Boolean:
    case Type::Integer:
        return integerValue() < 0 ? QString::number(integerValue()) : QString::number(unsignedIntegerValue());
    case Type::Real:
        return QString::fromLatin1(spellReal(doubleValue(), RealSpelling::Shortest));
    default:
        return {};
    }
}

bool Value::operator==(const Value& other) const
{
    if (const auto* own = std::get_if<ArrayPointer>(&m_value)) {
        const ArrayPointer others = other.array();
        return others && (*own == others || std::ranges::equal(**own, *others));
    }
    if (const auto* own = std::get_if<DictionaryPointer>(&m_value)) {
        const DictionaryPointer others = other.dictionary();
        return others && (*own == others || std::ranges::equal(**own, *others, [](const auto& left, const auto& right) {
            return left.key == right.key && left.value == right.value;
        }));
    }
    return m_value == other.m_value;
}

ArrayPointer Array::create(std::vector<Value> items)
{
    ArrayPointer array = create();
    array->m_items = std::move(items);
    return array;
}

void Array::reorder(const std::vector<size_t>& order)
{
    ++m_revision;
    std::vector<Value> items;
    items.reserve(order.size());
    std::ranges::transform(
        order, std::back_inserter(items), [this](size_t index) { return std::move(m_items[index]); });
    m_items = std::move(items);
}

DictionaryPointer Dictionary::create(std::vector<Entry> entries)
{
    const auto ascends = [](const Entry& left, const Entry& right) { return left.key < right.key; };
    const auto disorder = [](const Entry& left, const Entry& right) { return left.key >= right.key; };
    if (std::ranges::adjacent_find(entries, disorder) != entries.end()) {
        std::ranges::stable_sort(entries, ascends);
        // Unique keeps the first of equal ones: seen from the back, the last.
        const auto kept = std::unique(entries.rbegin(), entries.rend(),
            [](const Entry& left, const Entry& right) { return left.key == right.key; });
        entries.erase(entries.begin(), kept.base());
    }
    DictionaryPointer dictionary = create();
    dictionary->m_entries = std::move(entries);
    return dictionary;
}

std::vector<Dictionary::Entry>::const_iterator Dictionary::lowerBound(QStringView key) const
{
    return std::ranges::lower_bound(m_entries, key, {}, [](const Entry& entry) { return QStringView(entry.key); });
}

const Value* Dictionary::find(QStringView key) const
{
    if (m_entries.size() > linearSearchLimit) {
        const auto found = lowerBound(key);
        return found != m_entries.end() && found->key == key ? &found->value : nullptr;
    }
    for (const Entry& entry : m_entries) {
        if (entry.key == key) {
            return &entry.value;
        }
    }
    return nullptr;
}

Value Dictionary::value(QStringView key) const
{
    const Value* found = find(key);
    return found != nullptr ? *found : Value();
}

void Dictionary::insert(const QString& key, Value value)
{
    if (value.isNull()) {
        remove(key);
        return;
    }
    ++m_revision;
    const auto place = lowerBound(key);
    if (place != m_entries.end() && place->key == key) {
        m_entries[size_t(place - m_entries.cbegin())].value = std::move(value);
    } else {
        m_entries.insert(place, Entry{key, std::move(value)});
    }
}

bool Dictionary::remove(QStringView key)
{
    const auto place = lowerBound(key);
    if (place == m_entries.end() || place->key != key) {
        return false;
    }
    ++m_revision;
    m_entries.erase(place);
    return true;
}

QStringList Dictionary::keys() const
{
    QStringList result;
    result.reserve(size());
    for (const Entry& entry : m_entries) {
        result.append(entry.key);
    }
    return result;
}

bool isUnchanged(const Value& value)
{
    if (const Dictionary* dictionary = value.dictionaryInPlace()) {
        return dictionary->revision() == 0 && std::ranges::all_of(*dictionary, isUnchanged, &Dictionary::Entry::value);
    }
    if (const Array* array = value.arrayInPlace()) {
        return array->revision() == 0 && std::ranges::all_of(*array, isUnchanged);
    }
    return true;
}

} // namespace PropertyList
