// SPDX-License-Identifier: MIT
#include "PropertyListXmlScalars.h"

#include "PropertyListForms.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>

namespace PropertyList::XmlScalars {

namespace {

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

} // namespace

Parser parserOf(std::string_view element)
{
    static constexpr std::array<std::pair<std::string_view, Parser>, 6> parsers{{
        {"integer", parseInteger},
        {"real", parseRealElement},
        {"date", parseDate},
        {"data", parseData},
        {"true", [](std::string_view text) { return trimmed(text).empty() ? Value(true) : Value(); }},
        {"false", [](std::string_view text) { return trimmed(text).empty() ? Value(false) : Value(); }},
    }};
    const auto* const found = std::ranges::find(parsers, element, [](const auto& parser) { return parser.first; });
    return found == parsers.end() ? nullptr : found->second;
}

} // namespace PropertyList::XmlScalars
