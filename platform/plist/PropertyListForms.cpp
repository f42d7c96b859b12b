// SPDX-License-Identifier: MIT
#include "PropertyListForms.h"

#include <QStringDecoder>

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace PropertyList {

std::optional<QString> decodeUtf8(QByteArrayView bytes)
{
    if (bytes.isEmpty()) {
        return u""_s; // the decoder would answer a null text
    }
    using Flag = QStringConverter::Flag;
    QStringDecoder decoder(QStringDecoder::Utf8, Flag::Stateless | Flag::ConvertInitialBom);
    QString text = decoder(bytes);
    if (decoder.hasError()) {
        return std::nullopt;
    }
    return text;
}

std::pair<double, size_t> parseReal(std::string_view text)
{
    // std::from_chars knows no plus sign.
    const size_t plus = text.starts_with('+') && !text.starts_with("+-") ? 1 : 0;
    const char* begin = text.data() + plus;
    const char* end = text.data() + text.size();
    double number = 0;
    const auto [stop, status] = std::from_chars(begin, end, number);
    if (status == std::errc::invalid_argument) {
        return {0, 0};
    }
    const auto length = size_t(stop - text.data());
    if (status == std::errc::result_out_of_range) {
        const std::string_view digits = text.substr(0, length);
        const size_t exponent = digits.find_first_of("eE");
        const bool tiny = exponent == std::string_view::npos
                              ? std::string_view("0.").find(digits[plus]) != std::string_view::npos
                              : digits.substr(exponent + 1).starts_with('-');
        number = std::copysign(tiny ? 0.0 : std::numeric_limits<double>::infinity(), *begin == '-' ? -1.0 : 1.0);
    }
    return {number, length};
}

QByteArray spellReal(double number, RealSpelling spelling)
{
    if (std::isnan(number)) {
        return "nan";
    }
    if (std::isinf(number)) {
        return number > 0 ? "+infinity" : "-infinity";
    }
    if (spelling == RealSpelling::Shortest) {
        return QByteArray::number(number, 'g', QLocale::FloatingPointShortest);
    }
    std::array<char, 32> text{};
    const auto [end, status] =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::general, 17);
    return {text.data(), end - text.data()};
}

} // namespace PropertyList
