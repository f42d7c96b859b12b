// SPDX-License-Identifier: MIT
#include "PropertyListForms.h"

#include <platform/bytes/BoundedBytes.h>

#include <QtEndian>

#include <cmath>
#include <limits>

namespace PropertyList {

namespace {

constexpr quint64 headerSize = 8;
constexpr quint64 trailerSize = 32;
// Objects may be referred to several times; this bounds what a small file can be blown up to.
constexpr quint64 freeExpansions = 1'000'000;
constexpr qint64 millisecondsFrom1970To2001 = 978'307'200'000;

class BinaryReader final
{
public:
    explicit BinaryReader(QByteArrayView bytes)
        : m_file(bytes)
        , m_objects(bytes)
    {
    }

    Result<Value> read();

private:
    /// A marker byte taken apart: what kind of object, how many elements, and where they begin.
    struct Head
    {
        unsigned kind = 0;
        unsigned low = 0;
        quint64 count = 0;
        quint64 body = 0;
    };

    bool readTrailer();
    std::optional<quint64> offsetOf(quint64 index);
    std::optional<Head> readHead(quint64 offset);
    Value readObject(quint64 index, int depth);
    Value readSingle(const Head& head);
    Value readInteger(const Head& head);
    Value readReal(const Head& head);
    Value readDate(const Head& head);
    Value readString(const Head& head);
    Value readArray(const Head& head, int depth);
    Value readDictionary(const Head& head, int depth);
    std::optional<QString> readKey(quint64 index);
    bool holdsReferences(const Head& head, quint64 count, int depth);
    bool isNullObject(quint64 index);

    quint64 reference(const Head& head, quint64 place) const
    {
        return m_objects.big(head.body + place * m_referenceSize, m_referenceSize);
    }

    bool fail(QStringView what, quint64 offset) { return m_problem.note(what, qsizetype(offset)); }

    Value failed(QStringView what, quint64 offset)
    {
        fail(what, offset);
        return {};
    }

    BoundedBytes m_file;
    /// The beginning of the file, up to the table of objects.
    BoundedBytes m_objects;
    FirstProblem m_problem;
    quint64 m_offsetSize = 0;
    quint64 m_referenceSize = 0;
    quint64 m_count = 0;
    quint64 m_expansions = 0;
    // Texts are shared between all references to one object; a null QString stands for "not read yet".
    std::vector<QString> m_texts;
};

Result<Value> BinaryReader::read()
{
    Value root;
    if (readTrailer()) {
        m_texts.resize(m_count);
        root = readObject(m_file.big<quint64>(m_file.size() - 16), 0);
        if (root.isNull()) {
            fail(u"the root is null", headerSize);
        }
    }
    return resultOf(std::move(root), m_problem);
}

bool BinaryReader::readTrailer()
{
    if (!m_file.slice(0, headerSize).startsWith("bplist00") || m_file.size() < headerSize + trailerSize) {
        return fail(u"an unknown version, or too short", 0);
    }
    const quint64 trailer = m_file.size() - trailerSize;
    m_offsetSize = m_file.big<quint8>(trailer + 6);
    m_referenceSize = m_file.big<quint8>(trailer + 7);
    m_count = m_file.big<quint64>(trailer + 8);
    const auto table = m_file.big<quint64>(trailer + 24);
    if (m_offsetSize < 1 || m_offsetSize > 8 || m_referenceSize < 1 || m_referenceSize > 8) {
        return fail(u"an impossible width of offsets or references", trailer + 6);
    }
    if (table <= headerSize || table > trailer || m_count > (trailer - table) / m_offsetSize) {
        return fail(u"an impossible table of objects", trailer + 8);
    }
    m_objects = BoundedBytes(m_file.slice(0, table));
    return true;
}

std::optional<quint64> BinaryReader::offsetOf(quint64 index)
{
    const quint64 table = m_objects.size();
    if (index >= m_count) {
        fail(u"a reference to no object", table);
        return std::nullopt;
    }
    const quint64 offset = m_file.big(table + index * m_offsetSize, m_offsetSize);
    if (offset < headerSize || offset >= table) {
        fail(u"an object outside the file", table + index * m_offsetSize);
        return std::nullopt;
    }
    return offset;
}

std::optional<BinaryReader::Head> BinaryReader::readHead(quint64 offset)
{
    const unsigned marker = m_objects.big<quint8>(offset);
    Head head{marker >> 4, marker & 0xF, marker & 0xF, offset + 1};
    if (head.low != 0xF || head.kind < 0x4 || head.kind == 0x8) {
        return head;
    }
    // The count follows as an integer object.
    const unsigned countMarker = m_objects.big<quint8>(head.body);
    const quint64 width = quint64(1) << (countMarker & 0xF);
    if (countMarker >> 4 != 1 || width > 8 || !m_objects.contains(head.body + 1, width)) {
        fail(u"a count that is no integer", head.body);
        return std::nullopt;
    }
    head.count = m_objects.big(head.body + 1, width);
    head.body += 1 + width;
    return head;
}

Value BinaryReader::readObject(quint64 index, int depth)
{
    const std::optional<quint64> offset = offsetOf(index);
    if (offset && ++m_expansions > freeExpansions + m_file.size()) {
        return failed(u"objects are repeated too often", *offset);
    }
    const std::optional<Head> head = offset ? readHead(*offset) : std::nullopt;
    if (!head) {
        return {};
    }
    switch (head->kind) {
    case 0xA:
    case 0xC:
        return readArray(*head, depth);
    case 0xD:
        return readDictionary(*head, depth);
    case 0x5:
    case 0x6:
    case 0x7: {
        QString& text = m_texts[index];
        if (text.isNull()) {
            text = readString(*head).string();
        }
        return text.isNull() ? Value() : Value(text);
    }
    default:
        return readSingle(*head);
    }
}

Value BinaryReader::readSingle(const Head& head)
{
    switch (head.kind) {
    case 0x0:
        if (head.low == 0x8 || head.low == 0x9) {
            return head.low == 0x9;
        }
        break;
    case 0x1:
        return readInteger(head);
    case 0x2:
        return readReal(head);
    case 0x3:
        return readDate(head);
    case 0x4:
        return m_objects.contains(head.body, head.count) ? Value(m_objects.slice(head.body, head.count).toByteArray())
                                                         : failed(u"data reaches beyond its end", head.body);
    case 0x8:
        if (head.low < 8 && m_objects.contains(head.body, head.low + 1)) {
            return Uid{m_objects.big(head.body, head.low + 1)};
        }
        break;
    default:
        break;
    }
    return failed(u"an unknown object", head.body - 1);
}

Value BinaryReader::readInteger(const Head& head)
{
    const quint64 width = quint64(1) << head.low;
    if (head.low > 4 || !m_objects.contains(head.body, width)) {
        return failed(u"an impossible integer", head.body);
    }
    if (width < 8) {
        return m_objects.big(head.body, width);
    }
    const auto low = m_objects.big<quint64>(head.body + width - 8);
    if (width == 8) {
        return qint64(low);
    }
    const auto high = m_objects.big<quint64>(head.body);
    if (high == 0) {
        return low;
    }
    return ~high == 0 && qint64(low) < 0 ? Value(qint64(low)) : failed(u"an integer beyond 64 bits", head.body);
}

Value BinaryReader::readReal(const Head& head)
{
    if (head.low == 2 && m_objects.contains(head.body, 4)) {
        return double(m_objects.big<float>(head.body));
    }
    if (head.low == 3 && m_objects.contains(head.body, 8)) {
        return m_objects.big<double>(head.body);
    }
    return failed(u"an impossible real", head.body);
}

Value BinaryReader::readDate(const Head& head)
{
    // Far beyond every calendar, and well inside what milliseconds in 64 bits hold.
    constexpr double farthestSeconds = 1e12;
    if (head.low != 3 || !m_objects.contains(head.body, 8)) {
        return failed(u"an impossible date", head.body);
    }
    const auto seconds = m_objects.big<double>(head.body);
    if (!(std::abs(seconds) <= farthestSeconds)) {
        return failed(u"a date out of range", head.body);
    }
    return QDateTime::fromMSecsSinceEpoch(std::llround(seconds * 1000) + millisecondsFrom1970To2001, Qt::UTC);
}

Value BinaryReader::readString(const Head& head)
{
    const quint64 width = head.kind == 0x6 ? 2 : 1;
    if (head.count > m_file.size() || !m_objects.contains(head.body, head.count * width)) {
        return failed(u"text reaches beyond its end", head.body);
    }
    const QByteArrayView bytes = m_objects.slice(head.body, head.count * width);
    if (width == 2) {
        QString text(qsizetype(head.count), Qt::Uninitialized);
        qFromBigEndian<char16_t>(bytes.data(), text.size(), text.data());
        return text;
    }
    std::optional<QString> text = decodeUtf8(bytes);
    return text ? Value(*std::move(text)) : failed(u"text is no valid UTF-8", head.body);
}

/// Null objects are left out wherever they stand.
bool BinaryReader::isNullObject(quint64 index)
{
    const std::optional<quint64> offset = offsetOf(index);
    const int marker = offset ? m_objects.big<quint8>(*offset) : -1;
    return marker == 0x00 || marker == 0x0F;
}

/// Whether the container @p head can hold @p count references; with the reason where it cannot.
bool BinaryReader::holdsReferences(const Head& head, quint64 count, int depth)
{
    if (depth == maximumDepth) {
        return fail(u"containers are nested too deeply, or contain themselves", head.body);
    }
    return (head.count <= m_file.size() && m_objects.contains(head.body, count * m_referenceSize)) ||
           fail(u"a container reaches beyond its end", head.body);
}

Value BinaryReader::readArray(const Head& head, int depth)
{
    if (!holdsReferences(head, head.count, depth)) {
        return {};
    }
    std::vector<Value> items;
    for (quint64 place = 0; place < head.count; ++place) {
        const quint64 index = reference(head, place);
        if (isNullObject(index)) {
            continue;
        }
        Value item = readObject(index, depth + 1);
        if (item.isNull()) {
            return {};
        }
        items.push_back(std::move(item));
    }
    items.shrink_to_fit();
    return Array::create(std::move(items));
}

std::optional<QString> BinaryReader::readKey(quint64 index)
{
    const Value key = readObject(index, maximumDepth);
    if (key.type() == Type::String) {
        return key.string();
    }
    fail(u"a key that is no text", m_objects.size());
    return std::nullopt;
}

Value BinaryReader::readDictionary(const Head& head, int depth)
{
    if (!holdsReferences(head, head.count * 2, depth)) {
        return {};
    }
    std::vector<Dictionary::Entry> entries;
    for (quint64 place = 0; place < head.count; ++place) {
        const quint64 index = reference(head, head.count + place);
        std::optional<QString> key = readKey(reference(head, place));
        if (key && isNullObject(index)) {
            continue;
        }
        Value value = key ? readObject(index, depth + 1) : Value();
        if (value.isNull()) {
            return {};
        }
        entries.push_back({*std::move(key), std::move(value)});
    }
    entries.shrink_to_fit();
    return Dictionary::create(std::move(entries));
}

} // namespace

Result<Value> readBinary(QByteArrayView bytes)
{
    return BinaryReader(bytes).read();
}

} // namespace PropertyList
