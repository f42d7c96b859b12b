// SPDX-License-Identifier: MIT
#pragma once

#include "SoundSource.h"

#include <platform/bytes/Result.h>

#include <QByteArray>
#include <QString>

#include <memory>

class QIODevice;

/// Decodes the first audio stream of an AIFF, AIFF-C, WAVE, QuickTime, MPEG-4 or MPEG layer III file, told apart by
/// content, as it is asked for samples: memory does not grow with the length of the sound.
///
/// More than two channels are mixed down to two; the sample rate is the file's own. Packets that cannot be decoded are
/// left out. A decoder is used by one thread at a time.
class SoundDecoder final : public SoundSource
{
public:
    using OpenResult = Result<std::unique_ptr<SoundDecoder>>;

    /// Opens the regular file at @p path and decodes its first samples. Reads no more than 32 MiB to tell whether it is
    /// a sound, and never any other file that it may refer to.
    static OpenResult openFile(const QString& path);
    /// The same for a file in memory.
    static OpenResult openBytes(const QByteArray& bytes);

    ~SoundDecoder() override;
    SoundDecoder(const SoundDecoder&) = delete;
    SoundDecoder& operator=(const SoundDecoder&) = delete;

    SoundFormat format() const override;
    std::span<const float> nextSamples() override;

private:
    class Codec;

    explicit SoundDecoder(std::unique_ptr<Codec> codec);

    static OpenResult open(std::unique_ptr<QIODevice> input, const QString& name);

    std::unique_ptr<Codec> m_codec;
    /// The first samples were decoded when the file was opened and are still to be handed out.
    bool m_firstSamplesPending = true;
};
