// SPDX-License-Identifier: MIT
#include "PropertyListForms.h"

#include <platform/bytes/ByteWriter.h>

#include <QHash>

#include <algorithm>
#include <bit>

using ByteWriter::appendBig;

namespace PropertyList {

namespace {

constexpr qint64 millisecondsFrom1970To2001 = 978'307'200'000;

/// The bytes that hold @p largest: 1, 2, 4 or 8.
unsigned widthFor(quint64 largest)
{
    return std::bit_ceil((unsigned(std::bit_width(largest)) + 7) / 8 + (largest == 0 ? 1 : 0));
}

class BinaryWriter final
{
public:
    QByteArray write(const Value& root);

private:
    /// One object of the file: a value, or the text of a key, and the numbers of the objects that it refers to (of a
    /// dictionary first all keys, then all values).
    struct Object
    {
        const Value* value = nullptr;
        QStringView text;
        std::vector<quint64> references;
    };

    /// The number of the object that @p value becomes; nothing when it is nested too deeply.
    std::optional<quint64> collect(const Value& value, int depth);
    bool collectItems(const Array& array, int depth, std::vector<quint64>& references);
    bool collectEntries(const Dictionary& dictionary, int depth, std::vector<quint64>& references);
    quint64 collectText(QStringView text);
    void writeObject(const Object& object);
    void writeText(QStringView text);
    void writeInteger(const Value& value);
    void writeHead(unsigned marker, quint64 count);

    void number(quint64 value, unsigned width)
    {
        for (unsigned shift = width * 8; shift > 0; shift -= 8) {
            m_bytes.append(char(value >> (shift - 8)));
        }
    }

    std::vector<Object> m_objects;
    QHash<QStringView, quint64> m_texts;
    QByteArray m_bytes;
    unsigned m_referenceSize = 1;
};

QByteArray BinaryWriter::write(const Value& root)
{
    if (root.isNull() || !collect(root, 0)) {
        return {};
    }
    m_referenceSize = widthFor(m_objects.size() - 1);
    m_bytes = "bplist00";
    std::vector<quint64> offsets;
    offsets.reserve(m_objects.size());
    for (const Object& object : m_objects) {
        offsets.push_back(quint64(m_bytes.size()));
        writeObject(object);
    }
    const auto tableOffset = quint64(m_bytes.size());
    const unsigned offsetSize = widthFor(tableOffset);
    for (const quint64 offset : offsets) {
        number(offset, offsetSize);
    }
    m_bytes.append(6, '\0');
    m_bytes.append(char(offsetSize));
    m_bytes.append(char(m_referenceSize));
    for (const quint64 value : {quint64(m_objects.size()), quint64(0), tableOffset}) {
        appendBig(m_bytes, value); // how many objects, which is the root, where the table is
    }
    return std::move(m_bytes);
}

std::optional<quint64> BinaryWriter::collect(const Value& value, int depth)
{
    if (value.type() == Type::String) {
        return collectText(value.stringView());
    }
    const quint64 index = m_objects.size();
    m_objects.push_back({&value, {}, {}});
    const ArrayPointer array = value.array();
    const DictionaryPointer dictionary = value.dictionary();
    if (!array && !dictionary) {
        return index;
    }
    std::vector<quint64> references;
    if (depth == maximumDepth || (array && !collectItems(*array, depth + 1, references)) ||
        (dictionary && !collectEntries(*dictionary, depth + 1, references))) {
        return std::nullopt;
    }
    m_objects[index].references = std::move(references);
    return index;
}

quint64 BinaryWriter::collectText(QStringView text)
{
    const auto known = m_texts.constFind(text);
    if (known != m_texts.cend()) {
        return *known;
    }
    const quint64 index = m_objects.size();
    m_texts.insert(text, index);
    m_objects.push_back({nullptr, text, {}});
    return index;
}

bool BinaryWriter::collectItems(const Array& array, int depth, std::vector<quint64>& references)
{
    for (const Value& item : array) {
        if (!item.isNull()) {
            const std::optional<quint64> index = collect(item, depth);
            if (!index) {
                return false;
            }
            references.push_back(*index);
        }
    }
    return true;
}

bool BinaryWriter::collectEntries(const Dictionary& dictionary, int depth, std::vector<quint64>& references)
{
    references.reserve(size_t(dictionary.size()) * 2);
    for (const auto& entry : dictionary) {
        references.push_back(collectText(entry.key));
    }
    for (const auto& entry : dictionary) {
        const std::optional<quint64> index = collect(entry.value, depth);
        if (!index) {
            return false;
        }
        references.push_back(*index);
    }
    return true;
}

void BinaryWriter::writeObject(const Object& object)
{
    if (object.value == nullptr) {
        writeText(object.text);
        return;
    }
    const Value& value = *object.value;
    switch (value.type()) {
    case Type::Boolean:
        m_bytes.append(value.integerValue() != 0 ? '\x09' : '\x08');
        break;
    case Type::Integer:
        writeInteger(value);
        break;
    case Type::Real:
        m_bytes.append('\x23');
        appendBig(m_bytes, value.doubleValue());
        break;
    case Type::Date:
        m_bytes.append('\x33');
        appendBig(m_bytes, double(value.date().toMSecsSinceEpoch() - millisecondsFrom1970To2001) / 1000);
        break;
    case Type::Data:
        writeHead(0x40, quint64(value.data().size()));
        m_bytes.append(value.data());
        break;
    case Type::Uid: {
        const quint64 index = value.uid()->index;
        const unsigned width = widthFor(index);
        m_bytes.append(char(0x80 | (width - 1)));
        number(index, width);
        break;
    }
    case Type::Array:
        writeHead(0xA0, object.references.size());
        break;
    case Type::Dictionary:
        writeHead(0xD0, object.references.size() / 2);
        break;
    default:
        break;
    }
    for (const quint64 reference : object.references) {
        number(reference, m_referenceSize);
    }
}

void BinaryWriter::writeHead(unsigned marker, quint64 count)
{
    if (count < 15) {
        m_bytes.append(char(marker | unsigned(count)));
        return;
    }
    const unsigned width = widthFor(count);
    m_bytes.append(char(marker | 15));
    m_bytes.append(char(0x10 | unsigned(std::countr_zero(width))));
    number(count, width);
}

void BinaryWriter::writeText(QStringView text)
{
    const bool isAscii = std::ranges::all_of(text, [](QChar c) { return c.unicode() < 0x80; });
    writeHead(isAscii ? 0x50 : 0x60, quint64(text.size()));
    for (const QChar c : text) {
        number(c.unicode(), isAscii ? 1 : 2);
    }
}

void BinaryWriter::writeInteger(const Value& value)
{
    const qint64 integer = value.integerValue();
    const quint64 magnitude = value.unsignedIntegerValue();
    if (integer >= 0 && magnitude > quint64(integer)) {
        m_bytes.append('\x14');
        appendBig(m_bytes, quint64(0));
        appendBig(m_bytes, magnitude);
        return;
    }
    const unsigned width = integer < 0 ? 8 : widthFor(magnitude);
    m_bytes.append(char(0x10 | unsigned(std::countr_zero(width))));
    number(quint64(integer), width);
}

} // namespace

QByteArray writeBinary(const Value& root)
{
    return BinaryWriter().write(root);
}

} // namespace PropertyList
