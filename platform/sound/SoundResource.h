// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/Result.h>

#include <QByteArray>
#include <QByteArrayView>

#include <variant>
#include <vector>

/// Reader of 'snd ' resources, the classic Sound Manager's format (documented in "Inside Macintosh: Sound", chapter 2):
/// a list of commands over sampled sounds. Formats 1 and 2; standard, extended and compressed sampled sounds; notes
/// played by an installed sound or a square wave; rests. Everything in the resource is big-endian.
namespace SoundResource {

/// Uncompressed sound: signed 16-bit samples in native byte order, the channels of a frame side by side.
struct PcmSamples
{
    std::vector<qint16> samples;
};

/// Compressed sound: a whole AIFF-C file around the packets of the resource, for a media library to decode. It holds
/// one of the compression types ima4, ulaw, alaw, MAC3, MAC6, fl32, fl64, in24, in32.
struct WrappedFile
{
    QByteArray bytes;
};

/// A sound that can be played. A resource that plays nothing at all (no commands, only silence of no length) gives
/// PcmSamples without a sample.
struct Decoded
{
    std::variant<PcmSamples, WrappedFile> content;
    /// Frames per second, 1000 to 192000.
    double sampleRate = 0;
    /// 1 to 8.
    int channels = 1;
};

/// Reads one resource. Every length in it is taken as hostile: samples that are announced but not there are left out, a
/// sequence of notes and rests ends after 64 notes or 10 seconds, and what is decoded never exceeds 64 MiB. A failure
/// tells the byte offset.
Result<Decoded> decode(QByteArrayView bytes);

} // namespace SoundResource
