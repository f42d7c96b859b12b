// SPDX-License-Identifier: MIT
#include "MacRoman.h"

#include <QStringConverter>

#include <algorithm>

namespace {

constexpr auto encodingName = "macintosh";
constexpr QChar currencySign(0x00A4);
constexpr QChar euroSign(0x20AC);

} // namespace

QString MacRoman::decode(QByteArrayView bytes)
{
    return QStringDecoder(encodingName).decode(bytes);
}

std::optional<QByteArray> MacRoman::encode(QStringView text)
{
    QString composed = text.toString().normalized(QString::NormalizationForm_C);
    QStringEncoder encoder(encodingName, QStringConverter::Flag::Stateless);
    QByteArray bytes = encoder.encode(composed.replace(currencySign, euroSign));
    return encoder.hasError() ? std::nullopt : std::optional(bytes);
}

std::optional<QByteArray> MacRoman::encodePascalString(QStringView text, qsizetype maximumLength)
{
    std::optional<QByteArray> bytes = encode(text);
    if (!bytes || bytes->size() > std::min<qsizetype>(maximumLength, 255)) {
        return std::nullopt;
    }
    bytes->prepend(char(bytes->size()));
    return bytes;
}
