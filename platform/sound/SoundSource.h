// SPDX-License-Identifier: MIT
#pragma once

#include <span>

/// How the samples of a sound are laid out.
struct SoundFormat
{
    /// Frames per second, 1000 to 384000.
    int rate = 0;
    /// 1 or 2, side by side in each frame.
    int channels = 0;
};

/// A sound as a stream of samples: what is played asks for the next ones as it goes along.
class SoundSource
{
public:
    virtual ~SoundSource() = default;

    virtual SoundFormat format() const = 0;
    /// The next samples, full scale being 1.0, in whole frames; none at the end. Valid until the next call.
    virtual std::span<const float> nextSamples() = 0;

protected:
    SoundSource() = default;
    SoundSource(const SoundSource&) = default;
    SoundSource& operator=(const SoundSource&) = default;
};
