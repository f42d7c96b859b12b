#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QDateTime>
#include <QExplicitlySharedDataPointer>
#include <QSharedData>
#include <QString>
#include <QStringList>

#include <optional>
#include <variant>
#include <vector>

/// Property lists: the value model, and the functions that read and write its forms.
///
/// Containers are shared and mutable: copying a Value or a pointer copies the reference, so an entry that sits in two
/// arrays is one entry, and a change made through either is seen through both. A container must not be made to
/// contain itself. Everything here is for one thread at a time.
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

/// One value: a scalar, or a reference to a shared container. A null Value stands for "absent".
class Value final
{
public:
    Value() noexcept = default;
    Value(bool value) noexcept;
    Value(int value) noexcept;
    Value(qint64 value) noexcept;
    Value(quint64 value) noexcept;
    Value(double value) noexcept;
    Value(QString value) noexcept;
    Value(QByteArray value) noexcept;
    Value(const QDateTime& value);
    Value(Uid value) noexcept;
    Value(ArrayPointer value) noexcept;
    Value(DictionaryPointer value) noexcept;
    Value(const char*) = delete;

    Type type() const noexcept;
    bool isNull() const noexcept { return type() == Type::Null; }

    /// The text of a string; a null QString for every other type.
    QString string() const;
    /// The same without touching the reference count; valid as long as this value.
    QStringView stringView() const noexcept;
    /// The bytes of data; empty for every other type.
    QByteArray data() const;
    /// The moment of a date (UTC); invalid for every other type.
    QDateTime date() const;
    /// The container itself, or a null pointer for every other type.
    ArrayPointer array() const;
    DictionaryPointer dictionary() const;
    std::optional<Uid> uid() const;

    /// The integer-value conversion that numbers and strings answer alike: a number truncated towards zero, a
    /// boolean as 0 or 1, the leading decimal integer of a string (after white space, with an optional sign), held to
    /// the range of the type. Everything else, and text without leading digits, gives 0.
    qint64 integerValue() const;
    /// The same for floating point: "0.5abc" gives 0.5, text that does not begin with a number 0.
    double doubleValue() const;
    /// The text-value conversion: a string as it is, a number in its shortest decimal form, a boolean as "1" or "0";
    /// empty for every other type.
    QString textValue() const;

    /// Deep comparison: containers are equal when their contents are.
    bool operator==(const Value& other) const;

private:
    std::variant<std::monostate, bool, qint64, quint64, double, QString, QDateTime, QByteArray, Uid, ArrayPointer,
        DictionaryPointer>
        m_value;
};

/// A mutable, shared sequence of values.
class Array final : public QSharedData
{
public:
    static ArrayPointer create() { return ArrayPointer(new Array); }

    qsizetype size() const noexcept { return qsizetype(m_items.size()); }
    bool isEmpty() const noexcept { return m_items.empty(); }

    /// @p index must be in 0 … size() - 1.
    const Value& at(qsizetype index) const { return m_items[size_t(index)]; }
    void append(Value value) { m_items.push_back(std::move(value)); }
    void replace(qsizetype index, Value value) { m_items[size_t(index)] = std::move(value); }
    void removeAt(qsizetype index) { m_items.erase(m_items.begin() + index); }
    void clear() noexcept { m_items.clear(); }
    void reserve(qsizetype count) { m_items.reserve(size_t(count)); }

    auto begin() noexcept { return m_items.begin(); }
    auto end() noexcept { return m_items.end(); }
    auto begin() const noexcept { return m_items.begin(); }
    auto end() const noexcept { return m_items.end(); }

private:
    std::vector<Value> m_items;
};

/// A mutable, shared map from text to values, kept in ascending order of the keys' code units.
class Dictionary final : public QSharedData
{
public:
    struct Entry
    {
        QString key;
        Value value;
    };

    static DictionaryPointer create() { return DictionaryPointer(new Dictionary); }

    qsizetype size() const noexcept { return qsizetype(m_entries.size()); }
    bool isEmpty() const noexcept { return m_entries.empty(); }

    bool contains(QStringView key) const;
    /// The value under @p key, or a null Value where there is none.
    Value value(QStringView key) const;
    /// The value under @p key in place; null where there is none. Valid until the dictionary changes.
    const Value* find(QStringView key) const;
    /// Sets @p key; a null @p value removes it.
    void insert(const QString& key, Value value);
    /// Removes @p key and answers whether it was there.
    bool remove(QStringView key);
    QStringList keys() const;

    auto begin() const noexcept { return m_entries.begin(); }
    auto end() const noexcept { return m_entries.end(); }

private:
    std::vector<Entry> m_entries;
};

/// What a reader made of some bytes. A null root with an error text (which names the byte offset) means that they
/// are no property list; warnings tell what was odd but harmless.
struct ReadResult
{
    Value root;
    QString error;
    QStringList warnings;
};

/// Reads the XML, binary or old-style text form, told apart by the leading bytes.
ReadResult read(QByteArrayView bytes);

/// The XML form, exactly as the platform's own writer lays it out (tabs, keys sorted by code unit, base64 lines).
/// Nothing when a string holds a character that XML 1.0 cannot express, since a strict reader would refuse the file.
std::optional<QByteArray> writeXml(const Value& root);

/// The binary form ("bplist00").
QByteArray writeBinary(const Value& root);

/// The XML form, or the binary form where XML cannot hold the text. Empty for a null root.
QByteArray write(const Value& root);

} // namespace PropertyList
