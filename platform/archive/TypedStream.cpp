// SPDX-License-Identifier: MIT
#include "TypedStream.h"

#include <platform/bytes/ByteReader.h>

#include <string_view>

using namespace Qt::StringLiterals;

namespace TypedStream {

namespace {

constexpr QByteArrayView littleEndianSignature("\x04\x0Bstreamtyped");
constexpr QByteArrayView bigEndianSignature("\x04\x0Btypedstream");

/// The marks that stand where a number or a thing may stand.
enum class Mark : quint8 {
    Short = 0x81,
    Long = 0x82,
    Real = 0x83,
    New = 0x84,
    Nil = 0x85,
    EndOfObject = 0x86,
    LongLong = 0x87
};

constexpr quint8 firstReserved = 0x80;
constexpr quint8 lastReserved = 0x91;
/// The number of the first entry of a table: the lowest that fits into a byte beside the marks.
constexpr qint64 firstReference = -110;

constexpr int maximumDepth = 64;
constexpr int maximumClassDepth = 32;
// Type encodings can be repeated at one byte each: this bounds the work, not the size.
constexpr size_t maximumSteps = 4'000'000;

bool isOpening(char c)
{
    return c == '[' || c == '{';
}

/// Splits what stands inside the bracket that @p encoding is just behind off its front; nothing when it has no end.
std::optional<std::string_view> takeBracketed(std::string_view& encoding)
{
    int depth = 1;
    for (size_t i = 0; i < encoding.size(); ++i) {
        if (isOpening(encoding[i])) {
            ++depth;
        } else if ((encoding[i] == ']' || encoding[i] == '}') && --depth == 0) {
            const std::string_view inner = encoding.substr(0, i);
            encoding.remove_prefix(i + 1);
            return inner;
        }
    }
    return std::nullopt;
}

/// Reads one archive. After a problem everything reads as nothing, and no more values are kept.
class Reader final
{
public:
    explicit Reader(QByteArrayView bytes)
        : m_input(bytes, bytes.startsWith(littleEndianSignature) ? QSysInfo::LittleEndian : QSysInfo::BigEndian)
    {
    }

    Result<Archive> read();

private:
    void readGroup(std::vector<Item>& items, int depth);
    void readTypes(std::string_view encoding, std::vector<Item>& items, int depth);
    void readType(std::string_view& encoding, std::vector<Item>& items, int depth);
    void readArray(std::string_view inner, std::vector<Item>& items, int depth);
    Item readItem(char type, int depth);
    Item readObject(int depth);
    Item readCString();
    std::optional<size_t> readClass(int depth);
    /// The number of an entry in a table; nothing after a problem.
    std::optional<size_t> readNumber(size_t tableSize);
    std::optional<size_t> readReference(Entry::Kind kind);
    /// A number of any width behind its mark, or a small one in one byte.
    qint64 readInteger();
    /// A float or, for the type 'd', a double; whole numbers may be written as integers.
    double readReal(char type);
    /// Nil, or bytes behind their length.
    std::optional<QByteArray> readUnsharedString();
    /// The same, or a reference to one read before.
    std::optional<QByteArray> readSharedString();

    bool isNext(Mark mark) const { return !m_input.atEnd() && m_input.peek() == quint8(mark); }

    /// Goes past @p mark where it is what comes next.
    bool take(Mark mark) { return isNext(mark) && !m_input.take(1).isEmpty(); }

    bool hasFailed() const { return m_input.problem().isNoted(); }

    void countSteps(size_t steps)
    {
        m_steps += steps;
        if (m_steps > maximumSteps) {
            m_input.fail(u"values are repeated too often");
        }
    }

    ByteReader m_input;
    std::vector<QByteArray> m_strings;
    size_t m_steps = 0;
    Archive m_archive;
};

template <typename Value>
Item itemOf(std::optional<Value> value)
{
    return value ? Item(*std::move(value)) : Item();
}

Item itemOf(std::optional<size_t> number)
{
    return number ? Item(Reference{*number}) : Item();
}

Result<Archive> Reader::read()
{
    m_input.take(littleEndianSignature.size());
    readInteger(); // the version of the system that wrote it
    size_t complete = 0;
    while (!m_input.atEnd()) {
        readGroup(m_archive.items, 0);
        complete = hasFailed() ? complete : m_archive.items.size();
    }
    m_archive.items.resize(complete);
    m_archive.endsEarly = hasFailed();
    if (complete == 0) {
        m_input.fail(u"there is no value");
        return Failure{m_input.problem().text()};
    }
    return std::move(m_archive);
}

void Reader::readGroup(std::vector<Item>& items, int depth)
{
    const std::optional<QByteArray> encoding = readSharedString();
    if (!encoding) {
        m_input.fail(u"a value without a type");
        return;
    }
    readTypes({encoding->constData(), size_t(encoding->size())}, items, depth);
}

void Reader::readTypes(std::string_view encoding, std::vector<Item>& items, int depth)
{
    if (depth > maximumDepth) {
        m_input.fail(u"values are nested too deeply");
    }
    while (!encoding.empty() && !hasFailed()) {
        readType(encoding, items, depth);
    }
}

void Reader::readType(std::string_view& encoding, std::vector<Item>& items, int depth)
{
    const char type = encoding.front();
    encoding.remove_prefix(1);
    countSteps(1);
    if (type == '!') {
        return;
    }
    if (!isOpening(type)) {
        Item item = readItem(type, depth);
        if (!hasFailed()) {
            items.push_back(std::move(item));
        }
        return;
    }
    const std::optional<std::string_view> inner = takeBracketed(encoding);
    if (!inner) {
        m_input.fail(u"a type with a bracket that has no end");
        return;
    }
    countSteps(inner->size());
    if (type == '[') {
        readArray(*inner, items, depth + 1);
    } else if (const size_t name = inner->find('='); name != std::string_view::npos) {
        readTypes(inner->substr(name + 1), items, depth + 1);
    }
}

void Reader::readArray(std::string_view inner, std::vector<Item>& items, int depth)
{
    qint64 count = 0;
    while (!inner.empty() && inner.front() >= '0' && inner.front() <= '9' && count <= m_input.remaining()) {
        count = count * 10 + (inner.front() - '0');
        inner.remove_prefix(1);
    }
    if (inner == "c" || inner == "C") {
        items.emplace_back(m_input.take(count).toByteArray());
        return;
    }
    if (count > m_input.remaining()) {
        m_input.fail(u"an array reaches beyond the end");
    }
    for (qint64 i = 0; i < count && !hasFailed(); ++i) {
        countSteps(1);
        readTypes(inner, items, depth);
    }
}

Item Reader::readItem(char type, int depth)
{
    switch (type) {
    case 'c':
        return qint64(m_input.number<qint8>());
    case 'C':
    case 'B':
        return qint64(m_input.number<quint8>());
    case 'f':
    case 'd':
        return readReal(type);
    case '@':
        return readObject(depth + 1);
    case '#':
        return itemOf(readClass(0));
    case '*':
        return readCString();
    case ':':
    case '%':
        return itemOf(readSharedString());
    case '+':
        return itemOf(readUnsharedString());
    default:
        if (std::string_view("sSiIlLqQ").find(type) == std::string_view::npos) {
            m_input.fail(u"an unknown type");
        }
        return readInteger();
    }
}

Item Reader::readObject(int depth)
{
    if (depth > maximumDepth) {
        m_input.fail(u"objects are nested too deeply");
    }
    if (take(Mark::Nil)) {
        return {};
    }
    if (!take(Mark::New)) {
        return itemOf(readReference(Entry::Kind::Object));
    }
    // The number comes first, so that what is inside can refer to this object. Entries move when the table grows.
    const size_t number = m_archive.entries.size();
    m_archive.entries.emplace_back();
    const std::optional<size_t> objectClass = readClass(0);
    std::vector<Item> items;
    while (!take(Mark::EndOfObject) && !hasFailed()) {
        readGroup(items, depth);
    }
    m_archive.entries[number].parent = objectClass;
    m_archive.entries[number].items = std::move(items);
    return Reference{number};
}

std::optional<size_t> Reader::readClass(int depth)
{
    if (depth > maximumClassDepth) {
        m_input.fail(u"a class with too many superclasses");
    }
    if (take(Mark::Nil)) {
        return std::nullopt;
    }
    if (!take(Mark::New)) {
        return readReference(Entry::Kind::Class);
    }
    const QByteArray name = readSharedString().value_or(QByteArray());
    readInteger(); // the class's version
    const size_t number = m_archive.entries.size();
    m_archive.entries.push_back({Entry::Kind::Class, name, std::nullopt, {}});
    const std::optional<size_t> superclass = readClass(depth + 1);
    m_archive.entries[number].parent = superclass;
    return number;
}

Item Reader::readCString()
{
    if (take(Mark::Nil)) {
        return {};
    }
    if (!take(Mark::New)) {
        return itemOf(readReference(Entry::Kind::Text));
    }
    const QByteArray text = readSharedString().value_or(QByteArray());
    m_archive.entries.push_back({Entry::Kind::Text, text, std::nullopt, {}});
    return Reference{m_archive.entries.size() - 1};
}

std::optional<size_t> Reader::readReference(Entry::Kind kind)
{
    const std::optional<size_t> number = readNumber(m_archive.entries.size());
    if (number && m_archive.entries[*number].kind != kind) {
        m_input.fail(u"a reference to something of another kind");
        return std::nullopt;
    }
    return number;
}

std::optional<size_t> Reader::readNumber(size_t tableSize)
{
    const qint64 reference = readInteger();
    // Unsigned, since the distance of two numbers may be more than the largest of them.
    const size_t number = size_t(reference) - size_t(firstReference);
    if (reference < firstReference || number >= tableSize) {
        m_input.fail(u"a reference to nothing");
    }
    return hasFailed() ? std::nullopt : std::optional(number);
}

qint64 Reader::readInteger()
{
    const auto first = m_input.number<quint8>();
    switch (Mark(first)) {
    case Mark::Short:
        return m_input.number<qint16>();
    case Mark::Long:
        return m_input.number<qint32>();
    case Mark::LongLong:
        return m_input.number<qint64>();
    default:
        break;
    }
    if (first >= firstReserved && first <= lastReserved) {
        m_input.fail(u"no integer where one should be");
    }
    return qint8(first);
}

double Reader::readReal(char type)
{
    if (!take(Mark::Real)) {
        return double(readInteger());
    }
    return type == 'd' ? m_input.number<double>() : double(m_input.number<float>());
}

std::optional<QByteArray> Reader::readUnsharedString()
{
    if (take(Mark::Nil)) {
        return std::nullopt;
    }
    return m_input.take(readInteger()).toByteArray();
}

std::optional<QByteArray> Reader::readSharedString()
{
    if (take(Mark::Nil)) {
        return std::nullopt;
    }
    if (take(Mark::New)) {
        std::optional<QByteArray> text = readUnsharedString();
        m_strings.push_back(text.value_or(QByteArray()));
        return text;
    }
    const std::optional<size_t> number = readNumber(m_strings.size());
    return number ? std::optional(m_strings[*number]) : std::nullopt;
}

} // namespace

bool Archive::isKindOf(const Entry& entry, QByteArrayView className) const
{
    std::optional<size_t> number = entry.parent;
    // A class may claim to be its own superclass.
    for (int depth = 0; number && depth <= maximumClassDepth; ++depth) {
        if (entries[*number].text == className) {
            return true;
        }
        number = entries[*number].parent;
    }
    return false;
}

const Entry* Archive::object(const Item& item) const
{
    const auto* reference = std::get_if<Reference>(&item);
    if (reference == nullptr || entries[reference->number].kind != Entry::Kind::Object) {
        return nullptr;
    }
    return &entries[reference->number];
}

const Entry* Archive::rootObject() const
{
    return items.empty() ? nullptr : object(items.front());
}

Result<Archive> read(QByteArrayView bytes)
{
    if (!bytes.startsWith(littleEndianSignature) && !bytes.startsWith(bigEndianSignature)) {
        return Failure{u"byte 0: no typed stream of version 4"_s};
    }
    return Reader(bytes).read();
}

} // namespace TypedStream
