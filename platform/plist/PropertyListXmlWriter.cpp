// SPDX-License-Identifier: MIT
#include "PropertyListXmlWriter.h"

#include "PropertyListForms.h"

#include <algorithm>
#include <chrono>

namespace PropertyList {

namespace {

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

} // namespace

bool XmlOutput::appendText(QStringView text)
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

std::optional<QByteArray> XmlWriter::write(const Value& root)
{
    m_output.append(xmlHeader);
    if (root.isNull() || !writeValue(root, 0)) {
        return std::nullopt;
    }
    m_output.append(xmlFooter);
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

bool XmlWriter::writeKey(const QString& key, int indent)
{
    m_output.appendTabs(indent);
    return writeElement("key", key);
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
        if (!writeKey(key, indent + 1) || !writeValue(value, indent + 1)) {
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

std::optional<QByteArray> writeXml(const Value& root)
{
    return XmlWriter().write(root);
}

} // namespace PropertyList
