// SPDX-License-Identifier: MIT
#include "PropertyListXmlScanner.h"

#include <QStringDecoder>

#include <array>
#include <charconv>
#include <chrono>
#include <unordered_map>

using namespace Qt::StringLiterals;

namespace PropertyList {

namespace {

using Kind = XmlScanner::Kind;
using Tag = XmlScanner::Tag;
using Content = XmlScanner::Content;

std::string_view trimmed(std::string_view text)
{
    constexpr const char* spaces = " \t\r\n";
    const size_t begin = text.find_first_not_of(spaces);
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(spaces) - begin + 1);
}

/// Decimal, or hexadecimal after "0x", with an optional sign.
Value parseInteger(std::string_view text)
{
    text = trimmed(text);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (hexadecimal) {
        text.remove_prefix(2);
    }
    quint64 magnitude = 0;
    const char* end = text.data() + text.size();
    const auto [stop, status] = std::from_chars(text.data(), end, magnitude, hexadecimal ? 16 : 10);
    constexpr quint64 lowest = quint64(1) << 63;
    if (status != std::errc() || stop != end || (negative && magnitude > lowest)) {
        return {};
    }
    return negative ? Value(qint64(0 - magnitude)) : Value(magnitude);
}

Value parseRealElement(std::string_view text)
{
    text = trimmed(text);
    const auto [number, length] = parseReal(text);
    if (length == 0 || length != text.size()) {
        return {};
    }
    const auto spelledAs = [text, number = number](RealSpelling spelling) {
        const QByteArray spelled = spellReal(number, spelling);
        return text == std::string_view(spelled.constData(), size_t(spelled.size()));
    };
    const bool shortest = !spelledAs(RealSpelling::SeventeenDigits) && spelledAs(RealSpelling::Shortest);
    return {number, shortest ? RealSpelling::Shortest : RealSpelling::SeventeenDigits};
}

/// "2001-02-03T04:05:06Z".
Value parseDate(std::string_view text)
{
    text = trimmed(text);
    constexpr std::string_view pattern = "dddd-dd-ddTdd:dd:ddZ";
    if (text.size() != pattern.size()) {
        return {};
    }
    for (size_t i = 0; i < pattern.size(); ++i) {
        const bool matches = pattern[i] == 'd' ? text[i] >= '0' && text[i] <= '9' : text[i] == pattern[i];
        if (!matches) {
            return {};
        }
    }
    const auto number = [text](size_t begin, size_t length) {
        int result = 0;
        std::from_chars(text.data() + begin, text.data() + begin + length, result);
        return result;
    };
    using namespace std::chrono;
    const year_month_day date{year(number(0, 4)), month(unsigned(number(5, 2))), day(unsigned(number(8, 2)))};
    const hours hour(number(11, 2));
    const minutes minute(number(14, 2));
    const seconds second(number(17, 2));
    if (!date.ok() || hour.count() > 23 || minute.count() > 59 || second.count() > 59) {
        return {};
    }
    const sys_time<milliseconds> moment = sys_days(date) + hour + minute + second;
    return QDateTime::fromMSecsSinceEpoch(moment.time_since_epoch().count(), Qt::UTC);
}

Value parseData(std::string_view text)
{
    QByteArray packed;
    packed.reserve(qsizetype(text.size()));
    for (const char c : text) {
        if (c != '\n' && c != '\t' && c != ' ' && c != '\r') {
            packed.append(c);
        }
    }
    const auto decoded = QByteArray::fromBase64Encoding(packed, QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? Value(decoded.decoded) : Value();
}

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

class XmlReader final
{
public:
    explicit XmlReader(QByteArrayView bytes)
        : m_scanner(bytes, m_problem)
    {
    }

    Result<Value> read()
    {
        Value root = readRoot();
        return resultOf(std::move(root), m_problem);
    }

private:
    Value readRoot();
    Value readValue(const Tag& tag, int depth);
    Value readScalar(const Tag& tag);
    Value readString(const Tag& tag);
    Value readArray(int depth);
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
    using Parser = Value (*)(std::string_view);
    static constexpr std::array<std::pair<std::string_view, Parser>, 6> elements{{
        {"integer", parseInteger},
        {"real", parseRealElement},
        {"date", parseDate},
        {"data", parseData},
        {"true", [](std::string_view text) { return trimmed(text).empty() ? Value(true) : Value(); }},
        {"false", [](std::string_view text) { return trimmed(text).empty() ? Value(false) : Value(); }},
    }};
    for (const auto& [name, parse] : elements) {
        if (tag.name != name) {
            continue;
        }
        const auto content = tag.kind == Kind::Empty ? std::optional(Content()) : m_scanner.content(tag.name);
        if (!content) {
            return {};
        }
        Value value = parse(content->bytes);
        return value.isNull() ? fail(u"the content does not suit its element") : value;
    }
    return fail(u"an unknown element");
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
    for (;;) {
        const std::optional<Tag> tag = m_scanner.nextTag();
        if (!tag) {
            return {};
        }
        if (tag->kind == Kind::Close && tag->name == "array") {
            return Array::create(takeFrom(m_items, base));
        }
        Value item = readValue(*tag, depth);
        if (item.isNull()) {
            return {};
        }
        m_items.push_back(std::move(item));
    }
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
    return XmlReader(*utf8).read();
}

} // namespace PropertyList
