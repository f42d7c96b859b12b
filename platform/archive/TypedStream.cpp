// SPDX-License-Identifier: MIT
#include "TypedStream.h"

#include "TypedStreamInput.h"

#include <string_view>

using namespace Qt::StringLiterals;

namespace TypedStream {

namespace {

using Mark = Input::Mark;

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
        : m_input(bytes)
    {
    }

    ReadResult read();

private:
    bool readGroup(Group& group, int depth);
    bool readTypes(std::string_view encoding, std::vector<Item>& items, int depth);
    bool readType(std::string_view& encoding, std::vector<Item>& items, int depth);
    bool readArray(std::string_view inner, std::vector<Item>& items, int depth);
    bool readItem(char type, Item& item, int depth);
    bool readObject(Item& item, int depth);
    bool readClass(std::optional<size_t>& number, int depth);
    bool readCString(Item& item);
    bool readReference(Entry::Kind kind, size_t& number);

    bool countSteps(size_t steps)
    {
        m_steps += steps;
        return m_steps <= maximumSteps || m_input.fail(u"values are repeated too often");
    }

    Input m_input;
    size_t m_steps = 0;
    Archive m_archive;
};

ReadResult Reader::read()
{
    if (!m_input.readHeader()) {
        return {std::nullopt, m_input.error(), {}};
    }
    while (m_input.hasByte()) {
        Group group;
        if (!readGroup(group, 0)) {
            break;
        }
        m_archive.groups.push_back(std::move(group));
    }
    if (m_archive.groups.empty()) {
        m_input.fail(u"there is no value");
        return {std::nullopt, m_input.error(), {}};
    }
    return {std::move(m_archive), {}, m_input.error()};
}

bool Reader::readGroup(Group& group, int depth)
{
    std::optional<QByteArray> encoding;
    if (!m_input.readSharedString(encoding)) {
        return false;
    }
    if (!encoding) {
        return m_input.fail(u"a value without a type");
    }
    group.encoding = *encoding;
    return readTypes({encoding->constData(), size_t(encoding->size())}, group.items, depth);
}

bool Reader::readTypes(std::string_view encoding, std::vector<Item>& items, int depth)
{
    if (depth > maximumDepth) {
        return m_input.fail(u"values are nested too deeply");
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
    if (!countSteps(1)) {
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
        return m_input.fail(u"a type with a bracket that has no end");
    }
    if (!countSteps(inner->size())) {
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
    while (!inner.empty() && inner.front() >= '0' && inner.front() <= '9' && count <= m_input.remaining()) {
        count = count * 10 + (inner.front() - '0');
        inner.remove_prefix(1);
    }
    if (inner == "c" || inner == "C") {
        QByteArray bytes;
        if (!m_input.readRaw(count, bytes)) {
            return false;
        }
        items.emplace_back(std::move(bytes));
        return true;
    }
    if (count > m_input.remaining()) {
        return m_input.fail(u"an array reaches beyond the end");
    }
    for (qint64 i = 0; i < count; ++i) {
        if (!countSteps(1) || !readTypes(inner, items, depth)) {
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
        const bool isRead = m_input.readFixed(number);
        item = qint64(number);
        return isRead;
    }
    case 'C':
    case 'B': {
        quint8 number = 0;
        const bool isRead = m_input.readFixed(number);
        item = qint64(number);
        return isRead;
    }
    case 'f':
    case 'd':
        return m_input.readReal(type, item.emplace<double>());
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
        const bool isRead = type == '+' ? m_input.readUnsharedString(text) : m_input.readSharedString(text);
        item = text ? Item(*std::move(text)) : Item();
        return isRead;
    }
    default:
        return std::string_view("sSiIlLqQ").find(type) != std::string_view::npos
                   ? m_input.readInteger(item.emplace<qint64>())
                   : m_input.fail(u"an unknown type");
    }
}

bool Reader::readObject(Item& item, int depth)
{
    if (depth > maximumDepth) {
        return m_input.fail(u"objects are nested too deeply");
    }
    if (m_input.take(Mark::Nil)) {
        return true;
    }
    if (!m_input.take(Mark::New)) {
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
    while (!m_input.take(Mark::EndOfObject)) {
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
        return m_input.fail(u"a class with too many superclasses");
    }
    if (m_input.take(Mark::Nil)) {
        return true;
    }
    if (!m_input.take(Mark::New)) {
        return readReference(Entry::Kind::Class, number.emplace());
    }
    std::optional<QByteArray> name;
    qint64 version = 0;
    if (!m_input.readSharedString(name) || !m_input.readInteger(version)) {
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
    if (m_input.take(Mark::Nil)) {
        return true;
    }
    if (!m_input.take(Mark::New)) {
        return readReference(Entry::Kind::Text, item.emplace<Reference>().number);
    }
    std::optional<QByteArray> text;
    if (!m_input.readSharedString(text)) {
        return false;
    }
    item = Reference{m_archive.entries.size()};
    m_archive.entries.push_back({Entry::Kind::Text, text.value_or(QByteArray()), 0, std::nullopt, {}});
    return true;
}

bool Reader::readReference(Entry::Kind kind, size_t& number)
{
    return m_input.readReference(m_archive.entries.size(), number) &&
           (m_archive.entries[number].kind == kind || m_input.fail(u"a reference to something of another kind"));
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
