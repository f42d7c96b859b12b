// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>

/// The 8-bit character set Mac OS Roman (the Unicode Consortium's mapping table APPLE/ROMAN.TXT): ASCII below 0x80, a
/// table above. Byte 0xDB is the euro sign; byte 0xF0 is U+F8FF of the private use area, so that every byte survives a
/// round trip. The table is the one of Qt's converters, which have it where Qt is built with ICU, as the distributions
/// build it.
namespace MacRoman {

QString decode(QByteArrayView bytes);

/// The bytes of @p text; nothing when a character of it has no code. The currency sign, which 0xDB meant in old
/// texts, is accepted for the euro sign. Letters with separate accents are composed first.
std::optional<QByteArray> encode(QStringView text);

/// @p text as a length-prefixed string: a length byte and at most @p maximumLength (up to 255) bytes. Nothing when it
/// is longer or has a character without a code.
std::optional<QByteArray> encodePascalString(QStringView text, qsizetype maximumLength = 255);

} // namespace MacRoman
