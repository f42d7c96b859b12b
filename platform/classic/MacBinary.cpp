// SPDX-License-Identifier: MIT
#include "MacBinary.h"

#include <algorithm>

namespace {

constexpr quint64 block = MacBinary::headerSize;
constexpr quint64 versionThreeMark = 102;
constexpr quint32 versionThreeSignature = 0x6D42494E; // "mBIN"
constexpr quint64 checkedBytes = 124;
constexpr quint32 maximumForkLength = 0x7FFFFFFF;

constexpr quint64 padded(quint64 length)
{
    return (length + block - 1) / block * block;
}

/// CRC-16 with the polynomial 0x1021, most significant bit first, beginning with 0 (XMODEM).
quint16 checkSum(QByteArrayView bytes)
{
    quint32 crc = 0;
    for (const char byte : bytes) {
        crc ^= quint32(static_cast<unsigned char>(byte)) << 8;
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & 0x8000) != 0 ? (crc << 1) ^ 0x1021 : crc << 1;
        }
    }
    return quint16(crc);
}

bool isPlausibleVersionOne(const BoundedBytes& header, quint64 fileSize)
{
    const QByteArrayView reserved = header.slice(101, 25);
    const auto dataLength = header.big<quint32>(83);
    const auto resourceLength = header.big<quint32>(87);
    return header.big<quint8>(82) == 0 &&
           std::all_of(reserved.begin(), reserved.end(), [](char c) { return c == 0; }) &&
           dataLength < maximumForkLength && resourceLength < maximumForkLength && dataLength + resourceLength > 0 &&
           block + padded(dataLength) + padded(resourceLength) <= fileSize + block - 1;
}

/// The version of the header, 0 when it is none.
int versionOf(const BoundedBytes& header, quint64 fileSize)
{
    const auto nameLength = header.big<quint8>(1);
    const bool looksLikeOne = header.contains(0, block) && header.big<quint8>(0) == 0 && nameLength >= 1 &&
                              nameLength <= 63 && header.big<quint8>(74) == 0;
    if (!looksLikeOne) {
        return 0;
    }
    if (header.big<quint32>(versionThreeMark) == versionThreeSignature) {
        return 3;
    }
    if (header.big<quint16>(checkedBytes) == checkSum(header.slice(0, checkedBytes)) && header.big<quint8>(82) == 0 &&
        header.big<quint16>(checkedBytes) != 0) {
        return 2;
    }
    return isPlausibleVersionOne(header, fileSize) ? 1 : 0;
}

} // namespace

std::optional<MacBinary> MacBinary::parse(QByteArrayView head, quint64 fileSize)
{
    const BoundedBytes header(head);
    const int version = versionOf(header, fileSize);
    if (version == 0) {
        return std::nullopt;
    }
    MacBinary file;
    file.version = version;
    file.finderInfo.type = header.big<quint32>(65);
    const quint8 lowFlags = version == 1 ? 0 : header.big<quint8>(101);
    file.finderInfo.flags = quint16((header.big<quint8>(73) << 8) | lowFlags);

    const quint64 secondHeader = version == 1 ? 0 : header.big<quint16>(120);
    const quint64 dataEnd = block + padded(secondHeader) + padded(header.big<quint32>(83));
    file.resourceFork = ByteRange{dataEnd, header.big<quint32>(87)}.within(fileSize);
    return file;
}
