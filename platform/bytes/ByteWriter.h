// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QtEndian>

/// Writing of numbers behind the bytes that are there, as wide as their type.
namespace ByteWriter {

template <typename Number>
void appendBig(QByteArray& bytes, Number number)
{
    const Number stored = qToBigEndian(number);
    bytes.append(reinterpret_cast<const char*>(&stored), sizeof(stored));
}

template <typename Number>
void appendLittle(QByteArray& bytes, Number number)
{
    const Number stored = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char*>(&stored), sizeof(stored));
}

} // namespace ByteWriter
