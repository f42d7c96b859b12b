#include "TypedStream.h"

#include <QtEndian>

#include <string_view>

using namespace Qt::StringLiterals;

namespace TypedStream {

namespace {

constexpr unsigned char shortFollows = 0x81;
constexpr unsigned char longFollows = 0x82;
constexpr unsigned char realFollows = 0x83;
constexpr unsigned char newFollows = 0x84;
constexpr unsigned char nil = 0x85;
constexpr unsigned char endOfObject = 0x86;
constexpr unsigned char longLongFollows = 0x87;
constexpr unsigned char lastReserved = 0x91;
// The lowest number that fits into one byte beside the marks above.
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

class Reader final
{
public:
    explicit Reader(QByteArrayView bytes)
        : m_bytes(bytes)
    {
    }

    ReadResult read();

private:
    bool readHeader();
    bool readGroup(Group& group, int depth);
    bool readTypes(std::string_view encoding, std::vector<Item>& items, int depth);
    bool readType(std::string_view& encoding, std::vector<Item>& items, int depth);
    bool readArray(std::string_view inner, std::vector<Item>& items, int depth);
    bool readItem(char type, Item& item, int depth);
    bool readObject(Item& item, int depth);
    bool readClass(std::optional<size_t>& number, int depth);
    bool readCString(Item& item);
    bool readSharedString(std::optional<QByteArray>& text);
    bool readUnsharedString(std::optional<QByteArray>& text);
    bool readReference(Entry::Kind kind, size_t& number);
    bool readInteger(qint64& number);
    bool readReal(char type, double& number);
    bool readRaw(qint64 length, QByteArray& bytes);
    template <typename Number>
    bool readFixed(Number& number);

    bool hasByte() const { return m_at < m_bytes.size(); }

    unsigned char head() const { return hasByte() ? static_cast<unsigned char>(m_bytes[m_at]) : 0; }

    bool takeHead(unsigned char expected)
    {
        const bool taken = hasByte() && head() == expected;
        m_at += taken ? 1 : 0;
        return taken;
    }

    bool spend(size_t steps)
    {
        m_steps += steps;
        return m_steps <= maximumSteps || fail(u"values are repeated too often");
    }

    bool fail(QStringView what)
    {
        if (m_error.isEmpty()) {
            m_error = u"byte %1: %2"_s.arg(m_at).arg(what);
        }
        return false;
    }

    QByteArrayView m_bytes;
    qsizetype m_at = 0;
    bool m_isLittleEndian = true;
    size_t m_steps = 0;
    Archive m_archive;
    std::vector<QByteArray> m_strings;
    QString m_error;
};

ReadResult Reader::read()
{
    if (!readHeader()) {
        return {std::nullopt, std::move(m_error), {}};
    }
    while (hasByte()) {
        Group group;
        if (!readGroup(group, 0)) {
            break;
        }
        m_archive.groups.push_back(std::move(group));
    }
    if (m_archive.groups.empty()) {
        fail(u"there is no value");
        return {std::nullopt, std::move(m_error), {}};
    }
    return {std::move(m_archive), {}, std::move(m_error)};
}

bool Reader::readHeader()
{
    constexpr qsizetype signatureSize = 13;
    const bool isLittle = m_bytes.startsWith("\x04\x0Bstreamtyped");
    if (!isLittle && !m_bytes.startsWith("\x04\x0Btypedstream")) {
        return fail(u"no typed stream of version 4");
    }
    m_isLittleEndian = isLittle;
    m_at = signatureSize;
    qint64 systemVersion = 0;
    return readInteger(systemVersion);
}

bool Reader::readGroup(Group& group, int depth)
{
    std::optional<QByteArray> encoding;
    if (!readSharedString(encoding)) {
        return false;
    }
    if (!encoding) {
        return fail(u"a value without a type");
    }
    group.encoding = *encoding;
    return readTypes({encoding->constData(), size_t(encoding->size())}, group.items, depth);
}

bool Reader::readTypes(std::string_view encoding, std::vector<Item>& items, int depth)
{
    if (depth > maximumDepth) {
        return fail(u"values are nested too deeply");
    }
    while (!encoding.empty()) {
        if (!readType(encoding, items, depth)) {
            return false;
        }
    }
    return true;
}

bool Reader::readType(std::string_view& encoding, std::vector<Item>& items, int depth)
{
    const char type = encoding.front();
    encoding.remove_prefix(1);
    if (!spend(1)) {
        return false;
    }
    if (type == '!') {
        return true;
    }
    if (!isOpening(type)) {
        Item item;
        if (!readItem(type, item, depth)) {
            return false;
        }
        items.push_back(std::move(item));
        return true;
    }
    const std::optional<std::string_view> inner = takeBracketed(encoding);
    if (!inner) {
        return fail(u"a type with a bracket that has no end");
    }
    if (!spend(inner->size())) {
        return false;
    }
    if (type == '[') {
        return readArray(*inner, items, depth + 1);
    }
    const size_t name = inner->find('=');
    return name == std::string_view::npos || readTypes(inner->substr(name + 1), items, depth + 1);
}

bool Reader::readArray(std::string_view inner, std::vector<Item>& items, int depth)
{
    qint64 count = 0;
    while (!inner.empty() && inner.front() >= '0' && inner.front() <= '9' && count <= m_bytes.size()) {
        count = count * 10 + (inner.front() - '0');
        inner.remove_prefix(1);
    }
    if (inner == "c" || inner == "C") {
        QByteArray bytes;
        if (!readRaw(count, bytes)) {
            return false;
        }
        items.emplace_back(std::move(bytes));
        return true;
    }
    if (count > m_bytes.size() - m_at) {
        return fail(u"an array reaches beyond the end");
    }
    for (qint64 i = 0; i < count; ++i) {
        if (!spend(1) || !readTypes(inner, items, depth)) {
            return false;
        }
    }
    return true;
}

bool Reader::readItem(char type, Item& item, int depth)
{
    switch (type) {
    case 'c': {
        qint8 number = 0;
        const bool isRead = readFixed(number);
        item = qint64(number);
        return isRead;
    }
    case 'C':
    case 'B': {
        quint8 number = 0;
        const bool isRead = readFixed(number);
        item = qint64(number);
        return isRead;
    }
    case 'f':
    case 'd':
        return readReal(type, item.emplace<double>());
    case '@':
        return readObject(item, depth + 1);
    case '#': {
        std::optional<size_t> number;
        const bool isRead = readClass(number, 0);
        item = number ? Item(Reference{*number}) : Item();
        return isRead;
    }
    case '*':
        return readCString(item);
    case ':':
    case '%':
    case '+': {
        std::optional<QByteArray> text;
        const bool isRead = type == '+' ? readUnsharedString(text) : readSharedString(text);
        item = text ? Item(*std::move(text)) : Item();
        return isRead;
    }
    default:
        return std::string_view("sSiIlLqQ").find(type) != std::string_view::npos ? readInteger(item.emplace<qint64>())
                                                                                 : fail(u"an unknown type");
    }
}

bool Reader::readObject(Item& item, int depth)
{
    if (depth > maximumDepth) {
        return fail(u"objects are nested too deeply");
    }
    if (takeHead(nil)) {
        return true;
    }
    if (!takeHead(newFollows)) {
        return readReference(Entry::Kind::Object, item.emplace<Reference>().number);
    }
    // The number comes first, so that what is inside can refer to this object. Entries move when the table grows.
    const size_t number = m_archive.entries.size();
    m_archive.entries.emplace_back();
    item = Reference{number};
    std::optional<size_t> objectClass;
    if (!readClass(objectClass, 0)) {
        return false;
    }
    m_archive.entries[number].parent = objectClass;
    while (!takeHead(endOfObject)) {
        Group group;
        if (!readGroup(group, depth)) {
            return false;
        }
        m_archive.entries[number].groups.push_back(std::move(group));
    }
    return true;
}

bool Reader::readClass(std::optional<size_t>& number, int depth)
{
    if (depth > maximumClassDepth) {
        return fail(u"a class with too many superclasses");
    }
    if (takeHead(nil)) {
        return true;
    }
    if (!takeHead(newFollows)) {
        return readReference(Entry::Kind::Class, number.emplace());
    }
    std::optional<QByteArray> name;
    qint64 version = 0;
    if (!readSharedString(name) || !readInteger(version)) {
        return false;
    }
    number = m_archive.entries.size();
    m_archive.entries.push_back({Entry::Kind::Class, name.value_or(QByteArray()), version, std::nullopt, {}});
    std::optional<size_t> superclass;
    if (!readClass(superclass, depth + 1)) {
        return false;
    }
    m_archive.entries[*number].parent = superclass;
    return true;
}

bool Reader::readCString(Item& item)
{
    if (takeHead(nil)) {
        return true;
    }
    if (!takeHead(newFollows)) {
        return readReference(Entry::Kind::Text, item.emplace<Reference>().number);
    }
    std::optional<QByteArray> text;
    if (!readSharedString(text)) {
        return false;
    }
    item = Reference{m_archive.entries.size()};
    m_archive.entries.push_back({Entry::Kind::Text, text.value_or(QByteArray()), 0, std::nullopt, {}});
    return true;
}

bool Reader::readSharedString(std::optional<QByteArray>& text)
{
    if (takeHead(nil)) {
        return true;
    }
    if (takeHead(newFollows)) {
        if (!readUnsharedString(text)) {
            return false;
        }
        m_strings.push_back(text.value_or(QByteArray()));
        return true;
    }
    qint64 number = 0;
    if (!readInteger(number)) {
        return false;
    }
    number -= firstReference;
    if (number < 0 || quint64(number) >= m_strings.size()) {
        return fail(u"a reference to no text");
    }
    text = m_strings[size_t(number)];
    return true;
}

bool Reader::readUnsharedString(std::optional<QByteArray>& text)
{
    qint64 length = 0;
    if (takeHead(nil)) {
        return true;
    }
    return readInteger(length) && readRaw(length, text.emplace());
}

bool Reader::readReference(Entry::Kind kind, size_t& number)
{
    qint64 reference = 0;
    if (!readInteger(reference)) {
        return false;
    }
    reference -= firstReference;
    if (reference < 0 || quint64(reference) >= m_archive.entries.size() ||
        m_archive.entries[size_t(reference)].kind != kind) {
        return fail(u"a reference to nothing, or to something of another kind");
    }
    number = size_t(reference);
    return true;
}

template <typename Number>
bool Reader::readFixed(Number& number)
{
    if (m_bytes.size() - m_at < qsizetype(sizeof(Number))) {
        return fail(u"the archive is cut off");
    }
    const char* at = m_bytes.data() + m_at;
    number = m_isLittleEndian ? qFromLittleEndian<Number>(at) : qFromBigEndian<Number>(at);
    m_at += qsizetype(sizeof(Number));
    return true;
}

bool Reader::readInteger(qint64& number)
{
    const auto readWide = [this, &number](auto wide) {
        ++m_at;
        const bool isRead = readFixed(wide);
        number = wide;
        return isRead;
    };
    switch (head()) {
    case shortFollows:
        return readWide(qint16());
    case longFollows:
        return readWide(qint32());
    case longLongFollows:
        return readWide(qint64());
    default:
        break;
    }
    if (head() >= 0x80 && head() <= lastReserved) {
        return fail(u"no integer where one should be");
    }
    // One byte in two's complement.
    quint8 small = 0;
    const bool isRead = readFixed(small);
    number = small < 0x80 ? qint64{small} : qint64{small} - 0x100;
    return isRead;
}

bool Reader::readReal(char type, double& number)
{
    if (!takeHead(realFollows)) {
        qint64 integer = 0;
        const bool isRead = readInteger(integer);
        number = double(integer);
        return isRead;
    }
    if (type == 'd') {
        return readFixed(number);
    }
    float narrow = 0;
    const bool isRead = readFixed(narrow);
    number = double(narrow);
    return isRead;
}

bool Reader::readRaw(qint64 length, QByteArray& bytes)
{
    if (length < 0 || length > m_bytes.size() - m_at) {
        return fail(u"a length beyond the end");
    }
    bytes = m_bytes.sliced(m_at, length).toByteArray();
    m_at += length;
    return true;
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
    return groups.empty() || groups.front().items.empty() ? nullptr : object(groups.front().items.front());
}

ReadResult read(QByteArrayView bytes)
{
    return Reader(bytes).read();
}

} // namespace TypedStream
