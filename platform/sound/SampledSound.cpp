// SPDX-License-Identifier: MIT
#include "SampledSound.h"

#include <platform/bytes/ExtendedFloat.h>
#include <platform/bytes/FourCharCode.h>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

using Coding = SampledSound::Coding;

constexpr quint64 standardHeaderSize = 22;
constexpr quint64 longHeaderSize = 64;
constexpr quint8 standardHeader = 0x00;
constexpr quint8 extendedHeader = 0xFF;
constexpr quint8 compressedHeader = 0xFE;

constexpr double lowestRate = 1000;
constexpr double highestRate = 192000;
/// The rate of the first machines' sound hardware.
constexpr double classicRate = 0x56EE8BA3 / 65536.0;
constexpr quint32 mostChannels = 8;
constexpr int middleC = 60;
constexpr quint64 shortestLoop = 3;

constexpr std::array<Coding, 9> compressedCodings = {{
    {fourCharCode("ima4"), 16, 34, 64},
    {fourCharCode("ulaw"), 16, 1, 1},
    {fourCharCode("alaw"), 16, 1, 1},
    {fourCharCode("MAC3"), 16, 2, 6},
    {fourCharCode("MAC6"), 16, 1, 6},
    {fourCharCode("fl32"), 32, 4, 1},
    {fourCharCode("fl64"), 64, 8, 1},
    {fourCharCode("in24"), 24, 3, 1},
    {fourCharCode("in32"), 32, 4, 1},
}};

std::optional<Coding> plainCoding(quint32 type, int bits)
{
    if (bits != 8 && bits != 16) {
        return std::nullopt;
    }
    return Coding{type, bits, quint64(bits) / 8, 1, true};
}

/// Unmarked samples: 8-bit ones are unsigned, 16-bit ones signed.
std::optional<Coding> unmarkedCoding(int bits)
{
    return plainCoding(bits == 8 ? fourCharCode("raw ") : fourCharCode("twos"), bits);
}

std::optional<Coding> codingOfType(quint32 type, int bits)
{
    switch (type) {
    case fourCharCode("raw "):
    case fourCharCode("twos"):
    case fourCharCode("sowt"):
        return plainCoding(type, bits);
    default:
        break;
    }
    const auto found = std::find_if(compressedCodings.begin(), compressedCodings.end(),
        [type](const Coding& coding) { return coding.type == type; });
    return found == compressedCodings.end() ? std::nullopt : std::optional(*found);
}

/// The coding that a compressed sound header names: by its type where that is known, else by the older number.
std::optional<Coding> compressedCoding(const BoundedBytes& resource, quint64 header)
{
    constexpr qint16 none = 0;
    constexpr qint16 threeToOne = 3;
    constexpr qint16 sixToOne = 4;
    const auto type = resource.big<quint32>(header + 40);
    const auto bits = resource.big<quint16>(header + 62);
    if (std::optional<Coding> coding = codingOfType(type, bits)) {
        return coding;
    }
    switch (resource.big<qint16>(header + 56)) {
    case none:
        return unmarkedCoding(bits);
    case threeToOne:
        return codingOfType(fourCharCode("MAC3"), 0);
    case sixToOne:
        return codingOfType(fourCharCode("MAC6"), 0);
    default:
        return type == 0 || type == fourCharCode("NONE") ? unmarkedCoding(bits) : std::nullopt;
    }
}

std::optional<Coding> codingAt(const BoundedBytes& resource, quint64 header)
{
    switch (resource.big<quint8>(header + 20)) {
    case standardHeader:
        return unmarkedCoding(8);
    case extendedHeader:
        return unmarkedCoding(resource.big<quint16>(header + 48));
    default:
        return compressedCoding(resource, header);
    }
}

quint64 headerSizeAt(const BoundedBytes& resource, quint64 header)
{
    return resource.big<quint8>(header + 20) == standardHeader ? standardHeaderSize : longHeaderSize;
}

quint32 channelsAt(const BoundedBytes& resource, quint64 header)
{
    const bool isStandard = resource.big<quint8>(header + 20) == standardHeader;
    return isStandard ? 1 : resource.big<quint32>(header + 4);
}

/// Rates that no sound has stand for the nearest that one has; none at all stands for the classic one.
double readRate(const BoundedBytes& resource, quint64 header)
{
    double rate = resource.big<quint32>(header + 8) / 65536.0;
    if (rate == 0 && headerSizeAt(resource, header) == longHeaderSize) {
        rate = ExtendedFloat::decode(resource.slice(header + 26, ExtendedFloat::size));
    }
    return rate == 0 ? classicRate : std::clamp(rate, lowestRate, highestRate);
}

/// Takes as many of the announced packets as there are bytes for.
void takePackets(SampledSound& sound, QByteArrayView present, quint64 announced)
{
    const quint64 bytesPerPacket = sound.coding.packetBytes * quint64(sound.channels);
    const quint64 available = quint64(present.size()) / bytesPerPacket;
    sound.packets = announced;
    if (announced > available) {
        // Some writers count frames where packets are meant.
        const quint64 fromFrames = (announced + sound.coding.packetFrames - 1) / sound.coding.packetFrames;
        sound.packets = std::min(fromFrames, available);
    }
    sound.data = present.first(qsizetype(sound.packets * bytesPerPacket));
}

/// What makes the bytes at @p header no sound header; empty when they are one.
QString headerProblem(const BoundedBytes& resource, quint64 header)
{
    const auto encode = resource.big<quint8>(header + 20);
    if (encode != standardHeader && encode != extendedHeader && encode != compressedHeader) {
        return u"byte %1: unknown kind of sound header (%2)"_s.arg(header + 20).arg(encode);
    }
    if (!resource.contains(header, headerSizeAt(resource, header))) {
        return u"byte %1: the sound header does not fit into %2 bytes"_s.arg(header).arg(resource.size());
    }
    if (const quint32 channels = channelsAt(resource, header); channels < 1 || channels > mostChannels) {
        return u"byte %1: %2 channels"_s.arg(header + 4).arg(channels);
    }
    if (!codingAt(resource, header)) {
        return u"byte %1: unknown compression or sample size"_s.arg(header + 40);
    }
    return {};
}

void readLoop(SampledSound& sound, const BoundedBytes& resource, quint64 header)
{
    const quint64 begin = resource.big<quint32>(header + 12);
    const quint64 end = std::min<quint64>(resource.big<quint32>(header + 16), sound.packets);
    if (end >= begin + shortestLoop) {
        sound.loopBegin = begin;
        sound.loopEnd = end;
    }
}

template <typename Stored, typename Convert>
std::vector<qint16> converted(QByteArrayView data, Convert convert)
{
    std::vector<qint16> samples(size_t(data.size()) / sizeof(Stored));
    for (size_t i = 0; i < samples.size(); ++i) {
        samples[i] = convert(data.data() + i * sizeof(Stored));
    }
    return samples;
}

} // namespace

bool SampledSound::isPlausible(const BoundedBytes& resource, quint64 offset)
{
    return headerProblem(resource, offset).isEmpty();
}

Result<SampledSound> SampledSound::parse(const BoundedBytes& resource, quint64 offset)
{
    if (const QString problem = headerProblem(resource, offset); !problem.isEmpty()) {
        return Failure{problem};
    }
    SampledSound sound;
    sound.coding = codingAt(resource, offset).value_or(Coding());
    sound.channels = int(channelsAt(resource, offset));
    sound.sampleRate = readRate(resource, offset);
    const auto note = resource.big<quint8>(offset + 21);
    sound.baseNote = note == 0 || note > 127 ? middleC : note;
    const quint64 headerSize = headerSizeAt(resource, offset);
    const quint64 lengthAt = offset + (headerSize == standardHeaderSize ? 4 : 22);
    takePackets(sound, resource.slice(offset + headerSize, resource.size()), resource.big<quint32>(lengthAt));
    readLoop(sound, resource, offset);
    return sound;
}

std::vector<qint16> SampledSound::samples() const
{
    const bool isUnsigned = coding.type == fourCharCode("raw ");
    if (coding.sampleBits == 8) {
        const quint8 flip = isUnsigned ? 0x80 : 0;
        return converted<quint8>(
            data, [flip](const char* at) { return qint16((static_cast<quint8>(*at) ^ flip) << 8); });
    }
    if (coding.type == fourCharCode("sowt")) {
        return converted<qint16>(data, [](const char* at) { return qFromLittleEndian<qint16>(at); });
    }
    const quint16 flip = isUnsigned ? 0x8000 : 0;
    return converted<quint16>(data, [flip](const char* at) { return qint16(qFromBigEndian<quint16>(at) ^ flip); });
}
