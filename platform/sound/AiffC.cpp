// SPDX-License-Identifier: MIT
#include "AiffC.h"

#include <platform/bytes/ByteWriter.h>
#include <platform/bytes/ExtendedFloat.h>
#include <platform/bytes/FourCharCode.h>

using ByteWriter::appendBig;

namespace {

constexpr quint32 formatVersion = 0xA2805140;

/// A chunk: its code, the length of its contents, and the contents padded to an even length.
void appendChunk(QByteArray& bytes, quint32 code, QByteArrayView contents)
{
    appendBig(bytes, code);
    appendBig(bytes, quint32(contents.size()));
    bytes.append(contents);
    if (contents.size() % 2 != 0) {
        bytes.append('\0');
    }
}

QByteArray commonChunk(const SampledSound& sound)
{
    QByteArray common;
    appendBig(common, quint16(sound.channels));
    appendBig(common, quint32(sound.packets));
    appendBig(common, quint16(sound.coding.sampleBits));
    common.append(ExtendedFloat::encode(sound.sampleRate));
    appendBig(common, sound.coding.type);
    appendBig(common, quint16(0)); // the coding's name: an empty length-prefixed string, padded
    return common;
}

QByteArray soundChunk(const SampledSound& sound)
{
    QByteArray chunk;
    chunk.reserve(sound.data.size() + 8);
    appendBig(chunk, quint64(0)); // offset and block size
    chunk.append(sound.data);
    return chunk;
}

} // namespace

QByteArray AiffC::wrap(const SampledSound& sound)
{
    QByteArray form;
    appendBig(form, fourCharCode("AIFC"));
    QByteArray version;
    appendBig(version, formatVersion);
    appendChunk(form, fourCharCode("FVER"), version);
    appendChunk(form, fourCharCode("COMM"), commonChunk(sound));
    appendChunk(form, fourCharCode("SSND"), soundChunk(sound));

    QByteArray file;
    appendChunk(file, fourCharCode("FORM"), form);
    return file;
}
