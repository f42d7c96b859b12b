// SPDX-License-Identifier: MIT
#include "PropertyListForms.h"

#include <QStringEncoder>

#include <algorithm>
#include <chrono>
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

    QStringEncoder m_encoder{QStringEncoder::Utf8, QStringConverter::Flag::Stateless};
    QByteArray m_bytes = QByteArray(4096, Qt::Uninitialized);
    qsizetype m_size = 0;
};

/// Whether text is interrupted by @p character: it is not written as it is, or cannot be written at all.
bool isSpecial(QChar character)
{
    const char16_t unit = character.unicode();
    // Most are letters, of which this asks little.
    return unit > u'>' ? unit >= 0xFFFE : unit < 0x20 || unit == u'&' || unit == u'<' || unit == u'>';
}

/// What stands for a special character; nothing for those that XML cannot express.
std::string_view writtenForm(QChar special)
{
    switch (special.unicode()) {
    case u'&':
        return "&amp;";
    case u'<':
        return "&lt;";
    case u'>':
        return "&gt;";
    case u'\r':
        return "&#13;";
    case u'\t':
        return "\t";
    case u'\n':
        return "\n";
    default:
        return {};
    }
}

bool Output::appendText(QStringView text)
{
    while (!text.isEmpty()) {
        const auto* const special = std::find_if(text.begin(), text.end(), isSpecial);
        const QStringView plain(text.begin(), special);
        const char* const begin = reserve(size_t(m_encoder.requiredSpace(plain.size())));
        m_size += m_encoder.appendToBuffer(m_bytes.data() + m_size, plain) - begin;
        text = text.sliced(plain.size());
        if (!text.isEmpty()) {
            const std::string_view written = writtenForm(text.front());
            if (written.empty()) {
                return false;
            }
            append(written);
            text = text.sliced(1);
        }
    }
    // Lone surrogates.
    return !m_encoder.hasError();
}

class XmlWriter final
{
public:
    std::optional<QByteArray> write(const Value& root);

private:
    bool writeValue(const Value& value, int indent);
    bool writeElement(std::string_view element, QStringView text);
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
        return writeElement("string", value.stringView());
    case Type::Boolean:
        m_output.append(value.integerValue() != 0 ? "<true/>\n" : "<false/>\n");
        return true;
    case Type::Integer:
        return writeElement("integer", value.textValue());
    case Type::Real:
        return writeElement("real", QString::fromLatin1(spellReal(value.doubleValue(), value.realSpelling())));
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

bool XmlWriter::writeElement(std::string_view element, QStringView text)
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
    return writeElement("date",
        QString::asprintf("%04d-%02u-%02uT%02d:%02d:%02dZ", int(day.year()), unsigned(day.month()), unsigned(day.day()),
            int(time.hours().count()), int(time.minutes().count()), int(time.seconds().count())));
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
        if (!writeElement("key", key) || !writeValue(value, indent + 1)) {
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
    writeElement("integer", QString::number(uid.index));
    line(indent, "</dict>");
}

} // namespace

std::optional<QByteArray> writeXml(const Value& root)
{
    return XmlWriter().write(root);
}

} // namespace PropertyList
