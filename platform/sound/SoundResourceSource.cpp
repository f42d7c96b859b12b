// SPDX-License-Identifier: MIT
#include "SoundResourceSource.h"

#include "SoundDecoder.h"
#include "SoundResource.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace {

constexpr size_t framesPerBlock = 4096;

/// Samples in memory, mixed down where there are more than two channels.
class PcmSource final : public SoundSource
{
public:
    PcmSource(std::vector<qint16> samples, double sampleRate, int channels)
        : m_memory(std::move(samples))
        , m_samples(m_memory)
        , m_channels(size_t(channels))
        , m_format{int(std::lround(sampleRate)), std::min(channels, 2)}
    {
    }

    SoundFormat format() const override { return m_format; }

    std::span<const float> nextSamples() override;

private:
    std::vector<qint16> m_memory;
    /// Those that are still to be handed out.
    std::span<const qint16> m_samples;
    size_t m_channels;
    SoundFormat m_format;
    std::vector<float> m_block;
};

std::span<const float> PcmSource::nextSamples()
{
    const size_t frames = std::min(m_samples.size() / m_channels, framesPerBlock);
    const auto outputs = size_t(m_format.channels);
    constexpr float fullScale = -float(std::numeric_limits<qint16>::min());
    // The even channels are on the left, the odd ones on the right; each side is the mean of its channels.
    m_block.assign(frames * outputs, 0.0F);
    for (size_t frame = 0; frame < frames; ++frame) {
        for (size_t channel = 0; channel < m_channels; ++channel) {
            const size_t side = channel % outputs;
            const size_t channelsOfSide = (m_channels - side + outputs - 1) / outputs;
            const auto sample = float(m_samples[frame * m_channels + channel]);
            m_block[frame * outputs + side] += sample / (fullScale * float(channelsOfSide));
        }
    }
    m_samples = m_samples.subspan(frames * m_channels);
    return m_block;
}

} // namespace

SoundResourceSource::Opened SoundResourceSource::open(QByteArrayView bytes)
{
    Result<SoundResource::Decoded> sound = SoundResource::decode(bytes);
    if (!sound) {
        return Failure{sound.error()};
    }
    if (const auto* file = std::get_if<SoundResource::WrappedFile>(&sound->content)) {
        auto decoder = SoundDecoder::openBytes(file->bytes);
        return decoder ? Opened(std::move(*decoder)) : Failure{decoder.error()};
    }
    auto& pcm = std::get<SoundResource::PcmSamples>((*sound).content);
    if (pcm.samples.empty()) {
        return std::unique_ptr<SoundSource>();
    }
    return std::unique_ptr<SoundSource>(
        std::make_unique<PcmSource>(std::move(pcm.samples), sound->sampleRate, sound->channels));
}
