// SPDX-License-Identifier: MIT
#include "PropertyListForms.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstring>

namespace PropertyList {

namespace {

constexpr std::string_view header =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";
constexpr std::string_view footer = "</plist>\n";

/// A growing byte array that is written through a pointer: appending to QByteArray byte by byte costs several times
/// more.
class Output final
{
public:
    void append(std::string_view bytes)
    {
        std::memcpy(reserve(bytes.size()), bytes.data(), bytes.size());
        m_size += qsizetype(bytes.size());
    }

    /// XML text; false when it holds a character that XML cannot express.
    bool appendText(QStringView text);

    void appendTabs(int count)
    {
        std::memset(reserve(size_t(count)), '\t', size_t(count));
        m_size += count;
    }

    QByteArray take() &&
    {
        m_bytes.resize(m_size);
        return std::move(m_bytes);
    }

private:
    char* reserve(size_t count)
    {
        const qsizetype needed = m_size + qsizetype(count);
        if (needed > m_bytes.size()) {
            m_bytes.resize(std::max<qsizetype>(needed, m_bytes.size() * 2));
        }
        return m_bytes.data() + m_size;
    }

    QByteArray m_bytes = QByteArray(4096, Qt::Uninitialized);
    qsizetype m_size = 0;
};

char* put(char* at, std::string_view bytes)
{
    std::memcpy(at, bytes.data(), bytes.size());
    return at + bytes.size();
}

/// One of the characters below U+0080 that is not written as it is; null for those that XML cannot express.
char* putSpecial(char* at, char16_t unit)
{
    switch (unit) {
    case u'&':
        return put(at, "&amp;");
    case u'<':
        return put(at, "&lt;");
    case u'>':
        return put(at, "&gt;");
    case u'\r':
        return put(at, "&#13;");
    case u'\t':
    case u'\n':
        *at = char(unit);
        return at + 1;
    default:
        return nullptr;
    }
}

char* putTail(char* at, char32_t character, int shift)
{
    *at = char(0x80 | ((character >> shift) & 0x3F));
    return at + 1;
}

/// A character from U+0080 on; moves @p next on past a low surrogate. Null for what XML cannot express.
char* putWide(char* at, char16_t unit, const char16_t*& next, const char16_t* end)
{
    if (unit < 0x800) {
        *at = char(0xC0 | (unit >> 6));
        return putTail(at + 1, unit, 0);
    }
    if (!QChar::isSurrogate(unit)) {
        *at = char(0xE0 | (unit >> 12));
        return unit >= 0xFFFE ? nullptr : putTail(putTail(at + 1, unit, 6), unit, 0);
    }
    if (!QChar::isHighSurrogate(unit) || next == end || !QChar::isLowSurrogate(*next)) {
        return nullptr;
    }
    const char32_t character = QChar::surrogateToUcs4(unit, *next++);
    *at = char(0xF0 | (character >> 18));
    return putTail(putTail(putTail(at + 1, character, 12), character, 6), character, 0);
}

bool Output::appendText(QStringView text)
{
    constexpr size_t longestPerUnit = 5;
    char* const begin = reserve(size_t(text.size()) * longestPerUnit);
    char* at = begin;
    const char16_t* const end = text.utf16() + text.size();
    for (const char16_t* next = text.utf16(); next != end;) {
        const char16_t unit = *next++;
        if (unit >= 0x80) {
            at = putWide(at, unit, next, end);
        } else if (unit < 0x20 || unit == u'&' || unit == u'<' || unit == u'>') {
            at = putSpecial(at, unit);
        } else {
            *at++ = char(unit);
            continue;
        }
        if (at == nullptr) {
            return false;
        }
    }
    m_size += at - begin;
    return true;
}

class XmlWriter final
{
public:
    std::optional<QByteArray> write(const Value& root);

private:
    bool writeValue(const Value& value, int indent);
    bool writeString(std::string_view element, QStringView text);
    void writeInteger(const Value& value);
    bool writeDate(const QDateTime& date);
    void writeData(const QByteArray& data, int indent);
    bool writeArray(const Array& array, int indent);
    bool writeDictionary(const Dictionary& dictionary, int indent);
    void writeUid(Uid uid, int indent);

    void line(int indent, std::string_view text)
    {
        m_output.appendTabs(indent);
        m_output.append(text);
        m_output.append("\n");
    }

    Output m_output;
};

std::optional<QByteArray> XmlWriter::write(const Value& root)
{
    m_output.append(header);
    if (root.isNull() || !writeValue(root, 0)) {
        return std::nullopt;
    }
    m_output.append(footer);
    return std::move(m_output).take();
}

bool XmlWriter::writeValue(const Value& value, int indent)
{
    m_output.appendTabs(indent);
    switch (value.type()) {
    case Type::String:
        return writeString("string", value.stringView());
    case Type::Boolean:
        m_output.append(value.integerValue() != 0 ? "<true/>\n" : "<false/>\n");
        return true;
    case Type::Integer:
        writeInteger(value);
        return true;
    case Type::Real: {
        const QByteArray text = spellReal(value.doubleValue(), value.realSpelling());
        m_output.append("<real>");
        m_output.append({text.constData(), size_t(text.size())});
        m_output.append("</real>\n");
        return true;
    }
    case Type::Date:
        return writeDate(value.date());
    case Type::Data:
        writeData(value.data(), indent);
        return true;
    case Type::Uid:
        writeUid(*value.uid(), indent);
        return true;
    case Type::Array:
        return writeArray(*value.array(), indent);
    case Type::Dictionary:
        return writeDictionary(*value.dictionary(), indent);
    case Type::Null:
        break;
    }
    return false;
}

bool XmlWriter::writeString(std::string_view element, QStringView text)
{
    m_output.append("<");
    m_output.append(element);
    m_output.append(">");
    if (!m_output.appendText(text)) {
        return false;
    }
    m_output.append("</");
    m_output.append(element);
    m_output.append(">\n");
    return true;
}

void XmlWriter::writeInteger(const Value& value)
{
    std::array<char, 24> digits{};
    char* const end = digits.data() + digits.size();
    const qint64 number = value.integerValue();
    const auto written = number < 0 ? std::to_chars(digits.data(), end, number)
                                    : std::to_chars(digits.data(), end, value.unsignedIntegerValue());
    m_output.append("<integer>");
    m_output.append({digits.data(), size_t(written.ptr - digits.data())});
    m_output.append("</integer>\n");
}

bool XmlWriter::writeDate(const QDateTime& date)
{
    using namespace std::chrono;
    const sys_time<milliseconds> moment{milliseconds(date.toMSecsSinceEpoch())};
    const auto dayBegin = floor<days>(moment);
    // Beyond the range of std::chrono::year the calendar would wrap around.
    if (dayBegin < sys_days(year(0) / 1 / 1) || dayBegin > sys_days(year(9999) / 12 / 31)) {
        return false;
    }
    const year_month_day day(dayBegin);
    const hh_mm_ss time(floor<seconds>(moment - dayBegin));
    std::array<char, 48> text{};
    const int length = std::snprintf(text.data(), text.size(), "<date>%04d-%02u-%02uT%02d:%02d:%02dZ</date>\n",
        int(day.year()), unsigned(day.month()), unsigned(day.day()), int(time.hours().count()),
        int(time.minutes().count()), int(time.seconds().count()));
    m_output.append({text.data(), size_t(length)});
    return true;
}

void XmlWriter::writeData(const QByteArray& data, int indent)
{
    constexpr int pageWidth = 76;
    constexpr int tabWidth = 8;
    constexpr int deepestIndent = 8;
    const auto lineLength = size_t(pageWidth - tabWidth * std::min(indent, deepestIndent)) / 4 * 4;
    const QByteArray encoded = data.toBase64();
    m_output.append("<data>\n");
    for (std::string_view rest(encoded.constData(), size_t(encoded.size())); !rest.empty();) {
        const std::string_view text = rest.substr(0, lineLength);
        line(indent, text);
        rest.remove_prefix(text.size());
    }
    line(indent, "</data>");
}

bool XmlWriter::writeArray(const Array& array, int indent)
{
    if (indent >= maximumDepth) {
        return false;
    }
    const auto isNull = [](const Value& item) { return item.isNull(); };
    if (std::ranges::all_of(array, isNull)) {
        m_output.append("<array/>\n");
        return true;
    }
    m_output.append("<array>\n");
    for (const Value& item : array) {
        if (!item.isNull() && !writeValue(item, indent + 1)) {
            return false;
        }
    }
    line(indent, "</array>");
    return true;
}

bool XmlWriter::writeDictionary(const Dictionary& dictionary, int indent)
{
    if (indent >= maximumDepth) {
        return false;
    }
    if (dictionary.isEmpty()) {
        m_output.append("<dict/>\n");
        return true;
    }
    m_output.append("<dict>\n");
    for (const auto& [key, value] : dictionary) {
        m_output.appendTabs(indent + 1);
        if (!writeString("key", key) || !writeValue(value, indent + 1)) {
            return false;
        }
    }
    line(indent, "</dict>");
    return true;
}

void XmlWriter::writeUid(Uid uid, int indent)
{
    m_output.append("<dict>\n");
    line(indent + 1, "<key>CF$UID</key>");
    m_output.appendTabs(indent + 1);
    writeInteger(uid.index);
    line(indent, "</dict>");
}

} // namespace

std::optional<QByteArray> writeXml(const Value& root)
{
    return XmlWriter().write(root);
}

} // namespace PropertyList
