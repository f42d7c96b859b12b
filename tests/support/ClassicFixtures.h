// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QtEndian>

#include <initializer_list>

/// Builders of the classic system's formats, byte by byte, for tests.
namespace ClassicFixtures {

template <typename Number>
QByteArray big(Number number)
{
    QByteArray bytes(sizeof(Number), Qt::Uninitialized);
    qToBigEndian(number, bytes.data());
    return bytes;
}

inline QByteArray zeros(qsizetype count)
{
    return QByteArray(count, '\0');
}

inline QByteArray padded(const QByteArray& bytes, qsizetype multiple)
{
    return bytes + zeros((multiple - bytes.size() % multiple) % multiple);
}

struct Resource
{
    QByteArray type;
    qint16 id = 0;
    QByteArray name;
    QByteArray data;
};

/// A resource fork; resources of one type must stand together.
inline QByteArray resourceFork(const QList<Resource>& resources)
{
    QByteArray data;
    QByteArray names;
    QByteArray references;

    struct Type
    {
        QByteArray code;
        int count;
        qsizetype referencesAt;
    };

    QList<Type> types;
    for (const Resource& resource : resources) {
        if (types.isEmpty() || types.last().code != resource.type) {
            types.append({resource.type, 0, references.size()});
        }
        ++types.last().count;
        references += big(resource.id);
        references += resource.name.isEmpty() ? QByteArray("\xFF\xFF") : big(quint16(names.size()));
        references += big(quint32(data.size())) + zeros(4);
        names += resource.name.isEmpty() ? QByteArray() : char(resource.name.size()) + resource.name;
        data += big(quint32(resource.data.size())) + resource.data;
    }
    const qsizetype typeListSize = 2 + types.size() * 8;
    QByteArray typeList = big(quint16(types.size() - 1));
    for (const Type& type : types) {
        typeList += type.code + big(quint16(type.count - 1)) + big(quint16(typeListSize + type.referencesAt));
    }
    const QByteArray map = zeros(24) + big(quint16(28)) + big(quint16(28 + typeListSize + references.size())) +
                           typeList + references + names;
    const QByteArray header =
        big(quint32(256)) + big(quint32(256 + data.size())) + big(quint32(data.size())) + big(quint32(map.size()));
    return padded(header, 256) + data + map;
}

inline QByteArray finderInfo(const QByteArray& type, quint16 flags = 0)
{
    return type + "cccc" + big(flags) + zeros(22);
}

inline QByteArray appleDouble(const QByteArray& finderInfo, const QByteArray& fork, bool single = false)
{
    return QByteArray::fromHex(single ? "00051600" : "00051607") + QByteArray::fromHex("00020000") + zeros(16) +
           big(quint16(2)) + big(quint32(9)) + big(quint32(50)) + big(quint32(32)) + big(quint32(2)) +
           big(quint32(82)) + big(quint32(fork.size())) + finderInfo + fork;
}

/// The check sum of MacBinary II, a bit at a time.
inline quint16 macBinaryCheckSum(QByteArrayView bytes)
{
    quint16 crc = 0;
    for (const char byte : bytes) {
        for (int bit = 7; bit >= 0; --bit) {
            const bool carry = ((crc >> 15) ^ (byte >> bit)) & 1;
            crc = quint16((crc << 1) ^ (carry ? 0x1021 : 0));
        }
    }
    return crc;
}

/// A MacBinary file of version 1, 2 or 3.
inline QByteArray macBinary(int version, const QByteArray& type, const QByteArray& data, const QByteArray& fork)
{
    QByteArray header = big(quint8(0)) + padded(char(4) + QByteArray("name"), 64) + type + "cccc" + zeros(10) +
                        big(quint32(data.size())) + big(quint32(fork.size())) + zeros(37);
    if (version == 3) {
        header.replace(102, 4, "mBIN");
    }
    if (version >= 2) {
        header[122] = char(version == 3 ? 130 : 129);
        header[123] = char(129);
        header.replace(124, 2, big(macBinaryCheckSum(QByteArrayView(header).first(124))));
    }
    return header + padded(data, 128) + fork;
}

/// An alias record of version 3 for @p path on the volume that is mounted at @p mountPoint.
inline QByteArray aliasRecord(const QByteArray& path, const QByteArray& mountPoint = "/")
{
    const auto item = [](qint16 tag, const QByteArray& data) -> QByteArray {
        return big(tag) + big(quint16(data.size())) + padded(data, 2);
    };
    const QByteArray items = item(18, path) + item(19, mountPoint) + item(-1, {});
    return zeros(4) + big(quint16(58 + items.size())) + big(quint16(3)) + zeros(50) + items;
}

/// The contents of an alias file that holds a bookmark for the path of these components.
inline QByteArray bookmarkFile(const QList<QByteArray>& components, const QByteArray& volume = "/")
{
    const auto little = [](quint32 number) {
        QByteArray bytes(4, Qt::Uninitialized);
        qToLittleEndian(number, bytes.data());
        return bytes;
    };
    const auto record = [&](quint32 type, const QByteArray& data) -> QByteArray {
        return little(quint32(data.size())) + little(type) + padded(data, 4);
    };
    QByteArray records = zeros(4);
    QByteArray offsets;
    for (const QByteArray& component : components) {
        offsets += little(quint32(records.size()));
        records += record(0x0101, component);
    }
    const auto path = quint32(records.size());
    records += record(0x0601, offsets);
    const auto volumePath = quint32(records.size());
    records += record(0x0101, volume);
    records.replace(0, 4, little(quint32(records.size())));
    records += little(12 + 24) + little(0xFFFFFFFE) + little(1) + little(0) + little(2);
    records += little(0x1004) + little(path) + little(0) + little(0x2002) + little(volumePath) + little(0);
    return QByteArray("book\0\0\0\0mark\0\0\0\0", 16) + little(56) + little(56) + little(quint32(records.size())) +
           little(0x10040000) + zeros(24) + records;
}

/// A 'snd ' resource of format 1 with these commands (8 bytes each), followed by @p data.
inline QByteArray soundResource(const QList<QByteArray>& commands, const QByteArray& data = {})
{
    return QByteArray::fromHex("0001 0001 0005 00000080") + big(quint16(commands.size())) + commands.join() + data;
}

/// A sound resource that plays once what is behind this header.
inline QByteArray play(const QByteArray& header)
{
    return soundResource({QByteArray::fromHex("8051 0000 00000014")}, header);
}

/// An extended sound header, at 22050 Hz, and its samples.
inline QByteArray extendedHeader(quint32 channels, quint32 frames, quint16 bits, const QByteArray& samples)
{
    return zeros(4) + big(channels) + QByteArray::fromHex("56220000") + zeros(8) + QByteArray::fromHex("FF3C") +
           big(frames) + zeros(22) + big(bits) + zeros(14) + samples;
}

/// A sound resource that plays 8-bit samples, mono, at 22050 Hz.
inline QByteArray simpleSound(const QByteArray& samples)
{
    return play(zeros(4) + big(quint32(samples.size())) + QByteArray::fromHex("56220000") + zeros(8) +
                QByteArray::fromHex("003C") + samples);
}

} // namespace ClassicFixtures
