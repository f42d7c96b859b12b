// SPDX-License-Identifier: MIT
#include "PropertyListForms.h"

#include <QHash>
#include <QtEndian>

#include <algorithm>
#include <bit>

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

    bool collect(const Value& value, int depth, quint64& index);
    bool collectArray(const Array& array, int depth, quint64 index);
    bool collectDictionary(const Dictionary& dictionary, int depth, quint64 index);
    quint64 collectText(QStringView text);
    void writeObject(const Object& object);
    void writeText(QStringView text);
    void writeInteger(const Value& value);
    void writeContainer(unsigned marker, const Object& object, size_t count);
    void writeHead(unsigned marker, quint64 count);
    void writeTrailer(quint64 tableOffset, unsigned offsetSize);

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
    quint64 rootIndex = 0;
    if (root.isNull() || !collect(root, 0, rootIndex)) {
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
    writeTrailer(tableOffset, offsetSize);
    return std::move(m_bytes);
}

void BinaryWriter::writeTrailer(quint64 tableOffset, unsigned offsetSize)
{
    m_bytes.append(6, '\0');
    number(offsetSize, 1);
    number(m_referenceSize, 1);
    number(m_objects.size(), 8);
    number(0, 8);
    number(tableOffset, 8);
}

bool BinaryWriter::collect(const Value& value, int depth, quint64& index)
{
    if (value.type() == Type::String) {
        index = collectText(value.stringView());
        return true;
    }
    index = m_objects.size();
    m_objects.push_back({&value, {}, {}});
    if (const ArrayPointer array = value.array()) {
        return depth < maximumDepth && collectArray(*array, depth + 1, index);
    }
    if (const DictionaryPointer dictionary = value.dictionary()) {
        return depth < maximumDepth && collectDictionary(*dictionary, depth + 1, index);
    }
    return true;
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

bool BinaryWriter::collectArray(const Array& array, int depth, quint64 index)
{
    std::vector<quint64> references;
    for (const Value& item : array) {
        quint64 itemIndex = 0;
        if (item.isNull()) {
            continue;
        }
        if (!collect(item, depth, itemIndex)) {
            return false;
        }
        references.push_back(itemIndex);
    }
    m_objects[index].references = std::move(references);
    return true;
}

bool BinaryWriter::collectDictionary(const Dictionary& dictionary, int depth, quint64 index)
{
    std::vector<quint64> references;
    references.reserve(size_t(dictionary.size()) * 2);
    for (const auto& entry : dictionary) {
        references.push_back(collectText(entry.key));
    }
    for (const auto& entry : dictionary) {
        quint64 valueIndex = 0;
        if (!collect(entry.value, depth, valueIndex)) {
            return false;
        }
        references.push_back(valueIndex);
    }
    m_objects[index].references = std::move(references);
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
        number(std::bit_cast<quint64>(value.doubleValue()), 8);
        break;
    case Type::Date:
        m_bytes.append('\x33');
        number(std::bit_cast<quint64>(double(value.date().toMSecsSinceEpoch() - millisecondsFrom1970To2001) / 1000), 8);
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
        writeContainer(0xA0, object, object.references.size());
        break;
    case Type::Dictionary:
        writeContainer(0xD0, object, object.references.size() / 2);
        break;
    default:
        break;
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
        number(0, 8);
        number(magnitude, 8);
        return;
    }
    const unsigned width = integer < 0 ? 8 : widthFor(magnitude);
    m_bytes.append(char(0x10 | unsigned(std::countr_zero(width))));
    number(quint64(integer), width);
}

void BinaryWriter::writeContainer(unsigned marker, const Object& object, size_t count)
{
    writeHead(marker, count);
    for (const quint64 reference : object.references) {
        number(reference, m_referenceSize);
    }
}

} // namespace

QByteArray writeBinary(const Value& root)
{
    return BinaryWriter().write(root);
}

} // namespace PropertyList
