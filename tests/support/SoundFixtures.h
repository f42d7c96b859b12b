// SPDX-License-Identifier: MIT
#pragma once

#include "ClassicFixtures.h"

#include <QByteArray>

#include <algorithm>
#include <cmath>
#include <numbers>

/// Sounds made of one tone, so that a recording tells which of them were heard.
namespace SoundFixtures {

constexpr int rate = 22050;

/// Big-endian 16-bit samples of a sine at a third of full scale.
inline QByteArray toneSamples(double frequency, double seconds)
{
    QByteArray samples;
    for (int frame = 0; frame < int(seconds * rate); ++frame) {
        const double phase = 2 * std::numbers::pi * frequency * frame / rate;
        samples += ClassicFixtures::big(qint16(std::lround(10000 * std::sin(phase))));
    }
    return samples;
}

inline QByteArray aiff(double frequency, double seconds)
{
    using namespace ClassicFixtures;
    const QByteArray samples = toneSamples(frequency, seconds);
    // 22050 as an extended floating-point number of 80 bits.
    const QByteArray extendedRate = QByteArray::fromHex("400dac44000000000000");
    const QByteArray common =
        "COMM" + big(quint32(18)) + big(qint16(1)) + big(quint32(samples.size() / 2)) + big(qint16(16)) + extendedRate;
    const QByteArray sound = "SSND" + big(quint32(samples.size() + 8)) + zeros(8) + samples;
    return "FORM" + big(quint32(4 + common.size() + sound.size())) + "AIFF" + common + sound;
}

inline QByteArray wave(double frequency, double seconds)
{
    const auto little = [](auto number) {
        QByteArray bytes = ClassicFixtures::big(number);
        std::reverse(bytes.begin(), bytes.end());
        return bytes;
    };
    QByteArray samples = toneSamples(frequency, seconds);
    for (qsizetype at = 0; at < samples.size(); at += 2) {
        std::swap(samples[at], samples[at + 1]);
    }
    const QByteArray format = "fmt " + little(quint32(16)) + little(quint16(1)) + little(quint16(1)) +
                              little(quint32(rate)) + little(quint32(rate * 2)) + little(quint16(2)) +
                              little(quint16(16));
    return "RIFF" + little(quint32(12 + format.size() + samples.size())) + "WAVE" + format + "data" +
           little(quint32(samples.size())) + samples;
}

/// A 'snd ' resource of format 1 with one extended sampled sound.
inline QByteArray soundResource(double frequency, double seconds)
{
    const QByteArray samples = toneSamples(frequency, seconds);
    return ClassicFixtures::play(ClassicFixtures::extendedHeader(1, quint32(samples.size() / 2), 16, samples));
}

} // namespace SoundFixtures
