// SPDX-License-Identifier: MIT
#include <platform/sound/SoundResource.h>

#include <QtGlobal>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Sound resources: whatever is decoded keeps the promises that the player relies on.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto decoded = SoundResource::decode(QByteArrayView(data, qsizetype(size)));
    if (!decoded) {
        if (decoded.error().isEmpty()) {
            qFatal("neither a sound nor a reason");
        }
        return 0;
    }
    const SoundResource::Decoded& sound = *decoded;
    const bool isInRange =
        sound.sampleRate >= 1000 && sound.sampleRate <= 192000 && sound.channels >= 1 && sound.channels <= 8;
    const auto* pcm = std::get_if<SoundResource::PcmSamples>(&sound.content);
    if (!isInRange || (pcm && pcm->samples.size() % size_t(sound.channels) != 0)) {
        qFatal("a sound outside its limits");
    }
    return 0;
}
