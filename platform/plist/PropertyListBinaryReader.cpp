// SPDX-License-Identifier: MIT
#include "PropertyListForms.h"

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
        : m_bytes(bytes)
    {
    }

    ReadResult read();

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
    bool readOffset(quint64 index, quint64& offset);
    std::optional<Head> readHead(quint64 offset);
    bool readCount(Head& head);
    Value readObject(quint64 index, int depth);
    Value readSingle(const Head& head);
    Value readInteger(const Head& head);
    Value readReal(const Head& head);
    Value readDate(const Head& head);
    Value readString(const Head& head);
    Value readArray(const Head& head, int depth);
    Value readDictionary(const Head& head, int depth);
    std::optional<QString> readKey(quint64 index);

    quint64 bigEndian(quint64 offset, quint64 width) const
    {
        quint64 number = 0;
        for (quint64 i = 0; i < width; ++i) {
            number = number << 8 | static_cast<unsigned char>(m_bytes[qsizetype(offset + i)]);
        }
        return number;
    }

    const char* at(quint64 offset) const { return m_bytes.data() + offset; }

    bool holds(quint64 offset, quint64 length) const
    {
        return offset <= m_tableOffset && length <= m_tableOffset - offset;
    }

    quint64 reference(const Head& head, quint64 place) const
    {
        return bigEndian(head.body + place * m_referenceSize, m_referenceSize);
    }

    bool isNullObject(quint64 index);

    bool fail(QStringView what, quint64 offset) { return m_findings.fail(what, qsizetype(offset)); }

    Value failed(QStringView what, quint64 offset)
    {
        fail(what, offset);
        return {};
    }

    QByteArrayView m_bytes;
    Findings m_findings;
    quint64 m_offsetSize = 0;
    quint64 m_referenceSize = 0;
    quint64 m_count = 0;
    quint64 m_tableOffset = 0;
    quint64 m_expansions = 0;
    // Texts are shared between all references to one object; a null QString stands for "not read yet".
    std::vector<QString> m_texts;
};

ReadResult BinaryReader::read()
{
    Value root;
    if (readTrailer()) {
        m_texts.resize(m_count);
        root = readObject(bigEndian(quint64(m_bytes.size()) - 16, 8), 0);
        if (root.isNull()) {
            fail(u"the root is null", headerSize);
        }
    }
    return std::move(m_findings).result(std::move(root));
}

bool BinaryReader::readTrailer()
{
    const auto size = quint64(m_bytes.size());
    if (!m_bytes.startsWith("bplist00") || size < headerSize + trailerSize) {
        return fail(u"an unknown version, or too short", 0);
    }
    const quint64 trailer = size - trailerSize;
    m_offsetSize = bigEndian(trailer + 6, 1);
    m_referenceSize = bigEndian(trailer + 7, 1);
    m_count = bigEndian(trailer + 8, 8);
    m_tableOffset = bigEndian(trailer + 24, 8);
    if (m_offsetSize < 1 || m_offsetSize > 8 || m_referenceSize < 1 || m_referenceSize > 8) {
        return fail(u"an impossible width of offsets or references", trailer + 6);
    }
    if (m_tableOffset <= headerSize || m_tableOffset > trailer || m_count > (trailer - m_tableOffset) / m_offsetSize) {
        return fail(u"an impossible table of objects", trailer + 8);
    }
    return true;
}

bool BinaryReader::readOffset(quint64 index, quint64& offset)
{
    if (index >= m_count) {
        return fail(u"a reference to no object", m_tableOffset);
    }
    const quint64 entry = m_tableOffset + index * m_offsetSize;
    offset = bigEndian(entry, m_offsetSize);
    return (offset >= headerSize && offset < m_tableOffset) || fail(u"an object outside the file", entry);
}

std::optional<BinaryReader::Head> BinaryReader::readHead(quint64 offset)
{
    const auto marker = unsigned(bigEndian(offset, 1));
    Head head{marker >> 4, marker & 0xF, marker & 0xF, offset + 1};
    const bool hasCount = head.kind >= 0x4 && head.kind != 0x8;
    if (hasCount && head.low == 0xF && !readCount(head)) {
        return std::nullopt;
    }
    return head;
}

/// The count behind a marker with the low bits 15: an integer object.
bool BinaryReader::readCount(Head& head)
{
    const quint64 marker = holds(head.body, 1) ? bigEndian(head.body, 1) : 0;
    const quint64 width = quint64(1) << (marker & 0xF);
    if (marker >> 4 != 1 || width > 8 || !holds(head.body + 1, width)) {
        return fail(u"a count that is no integer", head.body);
    }
    head.count = bigEndian(head.body + 1, width);
    head.body += 1 + width;
    return true;
}

Value BinaryReader::readObject(quint64 index, int depth)
{
    quint64 offset = 0;
    if (!readOffset(index, offset)) {
        return {};
    }
    if (++m_expansions > freeExpansions + quint64(m_bytes.size())) {
        return failed(u"objects are repeated too often", offset);
    }
    const std::optional<Head> head = readHead(offset);
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
        return holds(head.body, head.count) ? Value(QByteArray(at(head.body), qsizetype(head.count)))
                                            : failed(u"data reaches beyond its end", head.body);
    case 0x8:
        if (head.low < 8 && holds(head.body, head.low + 1)) {
            return Uid{bigEndian(head.body, head.low + 1)};
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
    if (head.low > 4 || !holds(head.body, width)) {
        return failed(u"an impossible integer", head.body);
    }
    if (width < 8) {
        return bigEndian(head.body, width);
    }
    const quint64 low = bigEndian(head.body + width - 8, 8);
    const bool negative = qint64(low) < 0;
    if (width == 8) {
        return qint64(low);
    }
    const quint64 high = bigEndian(head.body, 8);
    if (high == 0) {
        return low;
    }
    return ~high == 0 && negative ? Value(qint64(low)) : failed(u"an integer beyond 64 bits", head.body);
}

Value BinaryReader::readReal(const Head& head)
{
    if (head.low == 2 && holds(head.body, 4)) {
        return double(qFromBigEndian<float>(at(head.body)));
    }
    if (head.low == 3 && holds(head.body, 8)) {
        return qFromBigEndian<double>(at(head.body));
    }
    return failed(u"an impossible real", head.body);
}

Value BinaryReader::readDate(const Head& head)
{
    // Far beyond every calendar, and well inside what milliseconds in 64 bits hold.
    constexpr double farthestSeconds = 1e12;
    if (head.low != 3 || !holds(head.body, 8)) {
        return failed(u"an impossible date", head.body);
    }
    const auto seconds = qFromBigEndian<double>(at(head.body));
    if (!(std::abs(seconds) <= farthestSeconds)) {
        return failed(u"a date out of range", head.body);
    }
    return QDateTime::fromMSecsSinceEpoch(std::llround(seconds * 1000) + millisecondsFrom1970To2001, Qt::UTC);
}

Value BinaryReader::readString(const Head& head)
{
    const quint64 width = head.kind == 0x6 ? 2 : 1;
    if (head.count > quint64(m_bytes.size()) || !holds(head.body, head.count * width)) {
        return failed(u"text reaches beyond its end", head.body);
    }
    const auto count = qsizetype(head.count);
    if (width == 2) {
        QString text(count, Qt::Uninitialized);
        qFromBigEndian<char16_t>(at(head.body), count, text.data());
        return text;
    }
    std::optional<QString> text = decodeUtf8(QByteArrayView(at(head.body), count));
    return text ? Value(*std::move(text)) : failed(u"text is no valid UTF-8", head.body);
}

bool BinaryReader::isNullObject(quint64 index)
{
    quint64 offset = 0;
    return readOffset(index, offset) && (m_bytes[qsizetype(offset)] == '\0' || m_bytes[qsizetype(offset)] == '\x0F');
}

Value BinaryReader::readArray(const Head& head, int depth)
{
    if (depth == maximumDepth) {
        return failed(u"containers are nested too deeply, or contain themselves", head.body);
    }
    if (head.count > quint64(m_bytes.size()) || !holds(head.body, head.count * m_referenceSize)) {
        return failed(u"an array reaches beyond its end", head.body);
    }
    if (head.kind == 0xC) {
        m_findings.warn(u"a set is read as an array", qsizetype(head.body));
    }
    std::vector<Value> items;
    for (quint64 place = 0; place < head.count; ++place) {
        const quint64 index = reference(head, place);
        if (isNullObject(index)) {
            m_findings.warn(u"a null element is left out", qsizetype(head.body));
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
    fail(u"a key that is no text", m_tableOffset);
    return std::nullopt;
}

Value BinaryReader::readDictionary(const Head& head, int depth)
{
    if (depth == maximumDepth) {
        return failed(u"containers are nested too deeply, or contain themselves", head.body);
    }
    if (head.count > quint64(m_bytes.size()) || !holds(head.body, head.count * 2 * m_referenceSize)) {
        return failed(u"a dictionary reaches beyond its end", head.body);
    }
    std::vector<Dictionary::Entry> entries;
    for (quint64 place = 0; place < head.count; ++place) {
        const quint64 index = reference(head, head.count + place);
        std::optional<QString> key = readKey(reference(head, place));
        if (key && isNullObject(index)) {
            m_findings.warn(u"a null element is left out", qsizetype(head.body));
            continue;
        }
        Value value = key ? readObject(index, depth + 1) : Value();
        if (value.isNull()) {
            return {};
        }
        entries.push_back({*std::move(key), std::move(value)});
    }
    entries.shrink_to_fit();
    const auto count = qsizetype(entries.size());
    DictionaryPointer dictionary = Dictionary::create(std::move(entries));
    if (dictionary->size() != count) {
        m_findings.warn(u"a dictionary has a key more than once", qsizetype(head.body));
    }
    return dictionary;
}

} // namespace

ReadResult readBinary(QByteArrayView bytes)
{
    return BinaryReader(bytes).read();
}

} // namespace PropertyList
