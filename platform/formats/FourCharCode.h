#pragma once

#include <QByteArray>
#include <QtEndian>

/// The number of a four-character code such as a file, resource or coding type: fourCharCode("snd ") = 0x736E6420.
constexpr quint32 fourCharCode(const char (&text)[5])
{
    quint32 code = 0;
    for (int i = 0; i < 4; ++i) {
        code = (code << 8) | static_cast<unsigned char>(text[i]);
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
