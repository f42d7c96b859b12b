// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/Result.h>

#include <QByteArray>
#include <QByteArrayView>
#include <QDateTime>
#include <QExplicitlySharedDataPointer>
#include <QSharedData>
#include <QString>
#include <QStringList>

#include <concepts>
#include <optional>
#include <variant>
#include <vector>

/// Property lists: the value model, and the functions that read and write its forms (public source: the format's
/// DTD "PropertyList-1.0", and the published descriptions of the binary form "bplist00" and of the old-style text
/// form). Why they are our own: docs/decisions/property-list-reader.md.
///
/// Containers are shared and mutable (docs/decisions/shared-containers.md): copying a Value or a pointer copies the
/// reference, so an entry that sits in two arrays is one entry, and a change made through either is seen through both.
/// A container must not be made to contain itself. Everything here is for one thread at a time.
namespace PropertyList {

class Array;
class Dictionary;

using ArrayPointer = QExplicitlySharedDataPointer<Array>;
using DictionaryPointer = QExplicitlySharedDataPointer<Dictionary>;

/// A reference between the objects of a keyed archive; only the binary form has it as a type of its own.
struct Uid
{
    quint64 index = 0;

    bool operator==(const Uid&) const = default;
};

enum class Type { Null, Boolean, Integer, Real, String, Date, Data, Uid, Array, Dictionary };

/// How a real number is spelled in the XML form: with 17 significant digits (0.20000000000000001), or with as few as
/// give the same number back (0.2). Both are in use; a real keeps the one that it was read in.
enum class RealSpelling { SeventeenDigits, Shortest };

/// One value: a scalar, or a reference to a shared container. A null Value stands for "absent".
class Value final
{
public:
    Value() noexcept = default;

    /// Exactly bool: no pointer becomes a boolean by accident.
    template <std::same_as<bool> Boolean>
    Value(Boolean value) noexcept
        : m_value(value)
    {
    }

    Value(int value) noexcept;
    Value(qint64 value) noexcept;
    Value(quint64 value) noexcept;
    Value(double value, RealSpelling spelling = RealSpelling::SeventeenDigits) noexcept;
    Value(QString value) noexcept;
    Value(QByteArray value) noexcept;
    /// Kept as UTC, to the millisecond; an invalid moment gives a null Value.
    Value(const QDateTime& value);
    Value(Uid value) noexcept;
    /// A null pointer gives a null Value.
    Value(ArrayPointer value) noexcept;
    Value(DictionaryPointer value) noexcept;
    Value(const char*) = delete;

    Type type() const noexcept;

    bool isNull() const noexcept { return type() == Type::Null; }

    /// The text of a string; a null QString for every other type.
    QString string() const { return valueOr<QString>(); }

    /// The same without touching the reference count; valid as long as this value.
    QStringView stringView() const noexcept
    {
        const auto* text = std::get_if<QString>(&m_value);
        return text != nullptr ? QStringView(*text) : QStringView();
    }

    /// The bytes of data; empty for every other type.
    QByteArray data() const { return valueOr<QByteArray>(); }

    /// The moment of a date (UTC); invalid for every other type.
    QDateTime date() const { return valueOr<QDateTime>(); }

    /// The container itself, or a null pointer for every other type.
    ArrayPointer array() const { return valueOr<ArrayPointer>(); }

    DictionaryPointer dictionary() const { return valueOr<DictionaryPointer>(); }

    /// The array without touching its reference count, for scans of long lists; valid as long as this value.
    const Array* arrayInPlace() const noexcept
    {
        const auto* pointer = std::get_if<ArrayPointer>(&m_value);
        return pointer != nullptr ? pointer->constData() : nullptr;
    }

    /// The same for a dictionary.
    const Dictionary* dictionaryInPlace() const noexcept
    {
        const auto* pointer = std::get_if<DictionaryPointer>(&m_value);
        return pointer != nullptr ? pointer->constData() : nullptr;
    }

    std::optional<Uid> uid() const
    {
        const auto* reference = std::get_if<Uid>(&m_value);
        return reference != nullptr ? std::optional(*reference) : std::nullopt;
    }

    /// The integer-value conversion that numbers and strings answer alike: a number truncated towards zero, a
    /// boolean as 0 or 1, the leading decimal integer of a string (after white space, with an optional sign), held to
    /// the range of the type. Everything else, and text without leading digits, gives 0.
    qint64 integerValue() const;
    /// The same held to 32 bits.
    qint32 intValue() const;
    /// The same held to 0 … 2^64 - 1, for the integers beyond qint64.
    quint64 unsignedIntegerValue() const;
    /// The same for floating point: "0.5abc" gives 0.5, text that does not begin with a number 0.
    double doubleValue() const;
    /// The text-value conversion: a string as it is, a number in its shortest decimal form, a boolean as "1" or "0";
    /// empty for every other type.
    QString textValue() const;

    RealSpelling realSpelling() const noexcept;

    /// Deep comparison: containers are equal when their contents are. Different types are never equal; the spelling of
    /// reals does not count, and NaN equals NaN.
    bool operator==(const Value& other) const;

private:
    struct Real
    {
        double number;
        RealSpelling spelling;

        bool operator==(const Real& other) const noexcept;
    };

    template <typename Held>
    Held valueOr() const
    {
        const auto* held = std::get_if<Held>(&m_value);
        return held != nullptr ? *held : Held();
    }

    // quint64 holds only what qint64 cannot, so that equal integers have equal representations.
    std::variant<std::monostate, bool, qint64, quint64, Real, QString, QDateTime, QByteArray, Uid, ArrayPointer,
        DictionaryPointer>
        m_value;
};

/// A mutable, shared sequence of values.
class Array final : public QSharedData
{
public:
    static ArrayPointer create() { return ArrayPointer(new Array); }

    static ArrayPointer create(std::vector<Value> items);

    qsizetype size() const noexcept { return qsizetype(m_items.size()); }

    bool isEmpty() const noexcept { return m_items.empty(); }

    /// @p index must be in 0 … size() - 1.
    const Value& at(qsizetype index) const { return m_items[size_t(index)]; }

    void append(Value value)
    {
        ++m_revision;
        m_items.push_back(std::move(value));
    }

    void removeAt(qsizetype index)
    {
        ++m_revision;
        m_items.erase(m_items.begin() + index);
    }

    void clear() noexcept
    {
        ++m_revision;
        m_items.clear();
    }

    void reserve(qsizetype count) { m_items.reserve(size_t(count)); }

    /// How often the array may have been changed: equal numbers, equal elements. What a container in it holds does not
    /// count.
    quint32 revision() const noexcept { return m_revision; }

    /// Puts the elements into another order: the first one is then the one at the first index of @p order, which names
    /// each index once.
    void reorder(const std::vector<size_t>& order);

    auto begin() const noexcept { return m_items.begin(); }

    auto end() const noexcept { return m_items.end(); }

private:
    quint32 m_revision = 0;
    std::vector<Value> m_items;
};

/// A mutable, shared map from text to values, kept in ascending order of the keys' UTF-16 code units.
class Dictionary final : public QSharedData
{
public:
    struct Entry
    {
        QString key;
        Value value;
    };

    static DictionaryPointer create() { return DictionaryPointer(new Dictionary); }

    /// From entries in any order, without null values; of several with one key the last counts.
    static DictionaryPointer create(std::vector<Entry> entries);

    qsizetype size() const noexcept { return qsizetype(m_entries.size()); }

    bool isEmpty() const noexcept { return m_entries.empty(); }

    bool contains(QStringView key) const { return find(key) != nullptr; }

    /// The value under @p key, or a null Value where there is none.
    Value value(QStringView key) const;
    /// The value under @p key in place; null where there is none. Valid until the dictionary changes.
    const Value* find(QStringView key) const;
    /// Sets @p key; a null @p value removes it.
    void insert(const QString& key, Value value);
    /// Removes @p key and answers whether it was there.
    bool remove(QStringView key);
    QStringList keys() const;

    /// How often the dictionary has been changed: equal numbers, equal keys and values. What a container in it holds
    /// does not count.
    quint32 revision() const noexcept { return m_revision; }

    auto begin() const noexcept { return m_entries.begin(); }

    auto end() const noexcept { return m_entries.end(); }

private:
    std::vector<Entry>::const_iterator lowerBound(QStringView key) const;

    quint32 m_revision = 0;
    std::vector<Entry> m_entries;
};

/// Containers may be nested this deep; readers refuse deeper ones, and so do writers.
inline constexpr int maximumDepth = 64;

/// Whether no container in @p value has been changed since it was made.
bool isUnchanged(const Value& value);

/// Reads the XML, binary or old-style text form, told apart by the leading bytes. Why bytes are no property list names
/// the byte offset; bytes without any value (an empty file) are none.
///
/// Text: UTF-8, or UTF-16 with a byte order mark; XML also what its declaration names, as far as Qt knows it; the
/// old-style form falls back to Mac OS Roman. Invalid UTF-8 and NUL in XML are errors, raw control characters
/// (ill-formed XML, but written by other programs) are kept; line ends are kept as they are. Of duplicate keys the last
/// one counts. In XML a dictionary with "CF$UID" as its only key and a non-negative integer under it is a Uid. A set of
/// the binary form becomes an array, and its null elements are left out. Objects that a binary file refers to several
/// times become separate containers.
Result<Value> read(QByteArrayView bytes);

/// The dictionary that the ordinary file at @p path holds in one of those forms. What is no such file, has more than
/// @p maximumSize bytes or another root is refused; the reason does not name the path.
Result<DictionaryPointer> readFile(const QString& path, qint64 maximumSize);

/// The XML form, exactly as the platform's own writer lays it out (tabs, keys sorted by code unit, base64 lines), so
/// that a file in that form, read and written unchanged, stays the same byte for byte. A carriage return is written as
/// a character reference, dates lose fractions of a second, not-a-number and the infinities are "nan", "+infinity" and
/// "-infinity", null elements are left out.
///
/// Nothing where a strict reader would refuse the file or read something else: when text holds a character that XML 1.0
/// cannot express (control characters other than tab, line feed and carriage return, lone surrogates, U+FFFE, U+FFFF),
/// a date lies outside the years 0 to 9999, containers are nested deeper than maximumDepth, or @p root is null.
std::optional<QByteArray> writeXml(const Value& root);

/// The binary form ("bplist00"), which holds every value; null elements are left out. Empty when @p root is null or
/// nested deeper than maximumDepth.
QByteArray writeBinary(const Value& root);

/// The XML form, or the binary form where XML cannot hold the values. Empty when neither can (see writeBinary()): then
/// there is nothing to store, and an existing file must stay as it is.
QByteArray write(const Value& root);

} // namespace PropertyList
