// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/BoundedBytes.h>
#include <platform/bytes/Result.h>

#include <QByteArrayView>

#include <vector>

/// One sampled sound inside a 'snd ' resource: a standard (8-bit mono), extended or compressed sound header and the
/// samples behind it.
struct SampledSound
{
    /// How samples are stored, named by the four-character codes of AIFF-C.
    struct Coding
    {
        quint32 type = 0;
        /// Bits of one sample; 16 where the coding compresses.
        int sampleBits = 8;
        /// Bytes and frames that one packet of one channel holds.
        quint64 packetBytes = 1;
        quint64 packetFrames = 1;
        /// samples() understands it; otherwise a media library must.
        bool isPlain = false;
    };

    /// Frames per second, 1000 to 192000.
    double sampleRate = 0;
    /// 1 to 8.
    int channels = 1;
    /// The MIDI note (60 is middle C) of the recording.
    int baseNote = 60;
    /// First frame of the loop, and the frame behind it; both 0 when the sound has none.
    quint64 loopBegin = 0;
    quint64 loopEnd = 0;
    Coding coding;
    /// Packets per channel; all of them are in data.
    quint64 packets = 0;
    /// The packets, those of the channels side by side. A view into the resource.
    QByteArrayView data;

    /// Reads the sound whose header lies at @p offset. What the header announces beyond the end of the resource is left
    /// out. A failure tells the byte offset.
    static Result<SampledSound> parse(const BoundedBytes& resource, quint64 offset);

    /// True when a sound header can lie at @p offset: its own fields are in order and its samples begin in the
    /// resource.
    static bool isPlausible(const BoundedBytes& resource, quint64 offset);

    /// The samples of a plain coding as signed 16-bit numbers, the channels of a frame side by side.
    std::vector<qint16> samples() const;
};
