// SPDX-License-Identifier: MIT
#include "PropertyListXmlScalars.h"
#include "PropertyListXmlScanner.h"

#include <QStringDecoder>

#include <future>
#include <system_error>
#include <unordered_map>

using namespace Qt::StringLiterals;

namespace PropertyList {

namespace {

using Kind = XmlScanner::Kind;
using Tag = XmlScanner::Tag;
using Content = XmlScanner::Content;

/// A dictionary, or the reference that it stands for.
Value makeDictionary(std::vector<Dictionary::Entry> entries)
{
    if (entries.size() == 1 && entries.front().key == u"CF$UID") {
        const Value& value = entries.front().value;
        if (value.type() == Type::Integer && value.integerValue() >= 0) {
            return Uid{value.unsignedIntegerValue()};
        }
    }
    return Dictionary::create(std::move(entries));
}

/// The elements of an array from one of them on, and the offset behind its closing tag.
struct RestOfArray
{
    std::vector<Value> items;
    qsizetype end = 0;
};

/// The second half of a large document's phrases, read on a thread of its own while the first half is read.
///
/// Where the half begins is a guess, since only who has read everything before knows what a place in the file means (a
/// tag may stand in a comment). What is read here counts only when the reader arrives at just this tag, expecting an
/// element of an array as deep as a document's phrases; a wrong guess and a faulty file cost time on another core.
class SecondHalf final
{
public:
    explicit SecondHalf(QByteArrayView bytes);

    bool beginsWith(const Tag& tag, int depth) const { return tag.name.data() == m_tagName && depth == depthOfPhrases; }

    /// Waits for the thread. Nothing when something is wrong there: reading on from the tag will tell what. Once.
    std::optional<RestOfArray> take() { return m_rest.valid() ? m_rest.get() : std::nullopt; }

private:
    static constexpr int depthOfPhrases = 2;

    /// Where the first tag's name stands; null when nothing is read here.
    const char* m_tagName = nullptr;
    std::future<std::optional<RestOfArray>> m_rest;
};

class XmlReader final
{
public:
    explicit XmlReader(QByteArrayView bytes)
        : m_scanner(bytes, m_problem)
    {
    }

    Result<Value> read(SecondHalf& secondHalf)
    {
        m_secondHalf = &secondHalf;
        Value root = readRoot();
        return resultOf(std::move(root), m_problem);
    }

    /// Reads from the element at @p offset to the end of its array, whose depth is @p depth. Nothing after an error.
    std::optional<RestOfArray> readRestOfArray(qsizetype offset, int depth)
    {
        m_scanner.moveTo(offset);
        return readItems(depth) ? std::optional(RestOfArray{std::move(m_items), m_scanner.offset()}) : std::nullopt;
    }

private:
    Value readRoot();
    Value readValue(const Tag& tag, int depth);
    Value readScalar(const Tag& tag);
    Value readString(const Tag& tag);
    Value readArray(int depth);
    bool readItems(int depth);
    bool takeSecondHalf();
    Value readDictionary(int depth);
    bool readEntry(const Tag& tag, int depth);
    std::optional<QString> readKey(const Tag& tag);
    std::optional<QString> decode(const Content& content);

    Value fail(QStringView what)
    {
        m_problem.note(what, m_scanner.offset());
        return {};
    }

    FirstProblem m_problem;
    XmlScanner m_scanner;
    SecondHalf* m_secondHalf = nullptr;
    // The same few keys come back in every dictionary: they share one text. The bytes outlive the reader.
    std::unordered_map<std::string_view, QString> m_keys;
    // Containers under construction lie on top of each other and are copied out at their exact size.
    std::vector<Value> m_items;
    std::vector<Dictionary::Entry> m_entries;
};

template <typename Item>
std::vector<Item> takeFrom(std::vector<Item>& stack, size_t base)
{
    const auto begin = stack.begin() + qsizetype(base);
    std::vector<Item> taken(std::make_move_iterator(begin), std::make_move_iterator(stack.end()));
    stack.erase(begin, stack.end());
    return taken;
}

Value XmlReader::readRoot()
{
    std::optional<Tag> tag = m_scanner.nextTag();
    if (!tag) {
        return {};
    }
    if (tag->name != "plist" || tag->kind != Kind::Open) {
        return fail(u"no <plist> element");
    }
    tag = m_scanner.nextTag();
    Value root = tag ? readValue(*tag, 0) : Value();
    if (root.isNull()) {
        return {};
    }
    tag = m_scanner.nextTag();
    if (tag && (tag->name != "plist" || tag->kind != Kind::Close)) {
        return fail(u"<plist> does not end after its value");
    }
    tag = m_scanner.nextTag();
    if (tag && tag->kind != Kind::End) {
        return fail(u"something follows </plist>");
    }
    return root;
}

Value XmlReader::readValue(const Tag& tag, int depth)
{
    if (tag.kind == Kind::End || tag.kind == Kind::Close) {
        return fail(u"a value is missing");
    }
    if (tag.name == "string") {
        return readString(tag);
    }
    const bool isDictionary = tag.name == "dict";
    if (!isDictionary && tag.name != "array") {
        return readScalar(tag);
    }
    if (depth == maximumDepth) {
        return fail(u"containers are nested too deeply");
    }
    if (tag.kind == Kind::Empty) {
        return isDictionary ? Value(Dictionary::create()) : Value(Array::create());
    }
    return isDictionary ? readDictionary(depth + 1) : readArray(depth + 1);
}

Value XmlReader::readScalar(const Tag& tag)
{
    const XmlScalars::Parser parse = XmlScalars::parserOf(tag.name);
    if (parse == nullptr) {
        return fail(u"an unknown element");
    }
    const auto content = tag.kind == Kind::Empty ? std::optional(Content()) : m_scanner.content(tag.name);
    if (!content) {
        return {};
    }
    Value value = parse(content->bytes);
    return value.isNull() ? fail(u"the content does not suit its element") : value;
}

std::optional<QString> XmlReader::decode(const Content& content)
{
    const QByteArrayView bytes(content.bytes.data(), qsizetype(content.bytes.size()));
    if (content.isAscii) {
        return bytes.isEmpty() ? u""_s : QString::fromLatin1(bytes);
    }
    std::optional<QString> text = decodeUtf8(bytes);
    if (!text) {
        fail(u"text is no valid UTF-8");
    }
    return text;
}

Value XmlReader::readString(const Tag& tag)
{
    if (tag.kind == Kind::Empty) {
        return u""_s;
    }
    const std::optional<Content> content = m_scanner.content("string");
    std::optional<QString> text = content ? decode(*content) : std::nullopt;
    return text ? Value(*std::move(text)) : Value();
}

Value XmlReader::readArray(int depth)
{
    const size_t base = m_items.size();
    return readItems(depth) ? Value(Array::create(takeFrom(m_items, base))) : Value();
}

/// Past the array's closing tag.
bool XmlReader::readItems(int depth)
{
    for (;;) {
        const std::optional<Tag> tag = m_scanner.nextTag();
        if (!tag) {
            return false;
        }
        if (tag->kind == Kind::Close && tag->name == "array") {
            return true;
        }
        if (m_secondHalf != nullptr && m_secondHalf->beginsWith(*tag, depth) && takeSecondHalf()) {
            return true;
        }
        Value item = readValue(*tag, depth);
        if (item.isNull()) {
            return false;
        }
        m_items.push_back(std::move(item));
    }
}

bool XmlReader::takeSecondHalf()
{
    std::optional<RestOfArray> rest = m_secondHalf->take();
    if (!rest) {
        return false;
    }
    std::ranges::move(rest->items, std::back_inserter(m_items));
    m_scanner.moveTo(rest->end);
    return true;
}

Value XmlReader::readDictionary(int depth)
{
    const size_t base = m_entries.size();
    for (;;) {
        const std::optional<Tag> tag = m_scanner.nextTag();
        if (!tag) {
            return {};
        }
        if (tag->kind == Kind::Close && tag->name == "dict") {
            return makeDictionary(takeFrom(m_entries, base));
        }
        if (!readEntry(*tag, depth)) {
            return {};
        }
    }
}

bool XmlReader::readEntry(const Tag& tag, int depth)
{
    std::optional<QString> key = readKey(tag);
    const std::optional<Tag> valueTag = key ? m_scanner.nextTag() : std::nullopt;
    Value value = valueTag ? readValue(*valueTag, depth) : Value();
    if (value.isNull()) {
        return false;
    }
    m_entries.push_back({*std::move(key), std::move(value)});
    return true;
}

std::optional<QString> XmlReader::readKey(const Tag& tag)
{
    if (tag.name != "key" || tag.kind == Kind::Close || tag.kind == Kind::End) {
        fail(u"a key is missing");
        return std::nullopt;
    }
    if (tag.kind == Kind::Empty) {
        return u""_s;
    }
    const std::optional<Content> content = m_scanner.content("key");
    if (!content) {
        return std::nullopt;
    }
    if (!content->isAscii) {
        return decode(*content);
    }
    const auto [place, isNew] = m_keys.try_emplace(content->bytes);
    if (isNew) {
        place->second = QString::fromLatin1(content->bytes.data(), qsizetype(content->bytes.size()));
    }
    return place->second;
}

SecondHalf::SecondHalf(QByteArrayView bytes)
{
    // In bytes: below this, starting a thread costs more than it saves.
    constexpr qsizetype smallest = 1 << 20;
    constexpr std::string_view entry = "<dict>";
    const std::string_view text(bytes.data(), size_t(bytes.size()));
    const size_t offset = bytes.size() < smallest ? std::string_view::npos : text.find(entry, text.size() / 2);
    if (offset == std::string_view::npos) {
        return;
    }
    try {
        m_rest = std::async(std::launch::async,
            [bytes, offset] { return XmlReader(bytes).readRestOfArray(qsizetype(offset), depthOfPhrases); });
        m_tagName = bytes.data() + offset + 1;
    } catch (const std::system_error&) {
        // Without a thread to be had, the reader reads everything.
    }
}

/// @p bytes as UTF-8. Only 8-bit encodings need work: UTF-16 was converted before.
std::optional<QByteArray> transcoded(QByteArrayView bytes, std::string_view encodingName)
{
    const QByteArray name = QByteArray(encodingName.data(), qsizetype(encodingName.size())).toLower();
    if (name.isEmpty() || name.startsWith("utf-8") || name == "utf8" || name.startsWith("utf-16") ||
        name == "us-ascii") {
        return QByteArray::fromRawData(bytes.data(), bytes.size());
    }
    QStringDecoder decoder(name.constData());
    if (!decoder.isValid()) {
        return std::nullopt;
    }
    const QString text = decoder(bytes);
    return decoder.hasError() ? std::nullopt : std::optional(text.toUtf8());
}

} // namespace

Result<Value> readXml(QByteArrayView bytes)
{
    const std::string_view text(bytes.data(), size_t(bytes.size()));
    const std::optional<QByteArray> utf8 = transcoded(bytes, XmlScanner::declaredEncoding(text));
    if (!utf8) {
        return Failure{u"byte 0: the text is not in its declared encoding, or that is unknown"_s};
    }
    SecondHalf secondHalf(*utf8);
    return XmlReader(*utf8).read(secondHalf);
}

} // namespace PropertyList
