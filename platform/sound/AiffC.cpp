// SPDX-License-Identifier: MIT
#include "AiffC.h"

#include <platform/bytes/ExtendedFloat.h>
#include <platform/bytes/FourCharCode.h>

#include <QtEndian>

namespace {

constexpr quint32 formatVersion = 0xA2805140;

template <typename Number>
void append(QByteArray& bytes, Number number)
{
    const Number stored = qToBigEndian(number);
    bytes.append(reinterpret_cast<const char*>(&stored), sizeof(stored));
}

/// A chunk: its code, the length of its contents, and the contents padded to an even length.
void appendChunk(QByteArray& bytes, quint32 code, QByteArrayView contents)
{
    append(bytes, code);
    append(bytes, quint32(contents.size()));
    bytes.append(contents);
    if (contents.size() % 2 != 0) {
        bytes.append('\0');
    }
}

QByteArray commonChunk(const SampledSound& sound)
{
    QByteArray common;
    append(common, quint16(sound.channels));
    append(common, quint32(sound.packets));
    append(common, quint16(sound.coding.sampleBits));
    common.append(ExtendedFloat::encode(sound.sampleRate));
    append(common, sound.coding.type);
    append(common, quint16(0)); // the coding's name: an empty length-prefixed string, padded
    return common;
}

QByteArray soundChunk(const SampledSound& sound)
{
    QByteArray chunk;
    chunk.reserve(sound.data.size() + 8);
    append(chunk, quint64(0)); // offset and block size
    chunk.append(sound.data);
    return chunk;
}

} // namespace

QByteArray AiffC::wrap(const SampledSound& sound)
{
    QByteArray form;
    append(form, fourCharCode("AIFC"));
    QByteArray version;
    append(version, formatVersion);
    appendChunk(form, fourCharCode("FVER"), version);
    appendChunk(form, fourCharCode("COMM"), commonChunk(sound));
    appendChunk(form, fourCharCode("SSND"), soundChunk(sound));

    QByteArray file;
    appendChunk(file, fourCharCode("FORM"), form);
    return file;
}
