// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QtEndian>

#include <string_view>

/// The number of a four-character code such as a file, resource or coding type: fourCharCode("snd ") = 0x736E6420. Any
/// other length does not compile in a constant expression.
constexpr quint32 fourCharCode(std::string_view text)
{
    if (text.size() != 4) {
        throw "a four-character code has four characters";
    }
    quint32 code = 0;
    for (const char character : text) {
        code = (code << 8) | static_cast<unsigned char>(character);
    }
    return code;
}

/// The four Mac OS Roman bytes of a code.
inline QByteArray fourCharBytes(quint32 code)
{
    QByteArray bytes(4, Qt::Uninitialized);
    qToBigEndian(code, bytes.data());
    return bytes;
}
