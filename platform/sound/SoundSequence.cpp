// SPDX-License-Identifier: MIT
#include "SoundSequence.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace {

constexpr int mostNotes = 64;
constexpr double mostSecondsOfNotes = 10;
constexpr quint64 mostSamples = 64 * 1024 * 1024 / sizeof(qint16);
constexpr double highestAmplitude = 255;
constexpr double squareTimbre = 254;
constexpr double toneLevel = 8191;

double frequencyOf(int note)
{
    return 440 * std::exp2((note - 69) / 12.0);
}

qint16 toSample(double value)
{
    using Limits = std::numeric_limits<qint16>;
    return qint16(std::lround(std::clamp<double>(value, Limits::min(), Limits::max())));
}

} // namespace

SoundSequence::SoundSequence(const SampledSound& first)
    : m_sampleRate(first.sampleRate)
    , m_channels(first.channels)
{
}

/// The sample between frames, by straight lines. A channel that the sound does not have is its last one.
double SoundSequence::Instrument::at(double frame, int channel) const
{
    const auto channelCount = size_t(sound.channels);
    const size_t side = std::min(size_t(channel), channelCount - 1);
    const auto before = size_t(frame);
    const size_t after = std::min<size_t>(before + 1, frames() - 1);
    const double weight = frame - double(before);
    return samples[before * channelCount + side] * (1 - weight) + samples[after * channelCount + side] * weight;
}

SoundSequence::Instrument SoundSequence::decode(const SampledSound& sound)
{
    const quint64 samples = quint64(sound.data.size()) / sound.coding.packetBytes;
    if (samples > mostSamples - m_decodedSamples) {
        return {sound, {}};
    }
    m_decodedSamples += samples;
    return {sound, sound.samples()};
}

void SoundSequence::install(const SampledSound& sound)
{
    m_instrument = decode(sound);
}

void SoundSequence::playOnce(const SampledSound& sound)
{
    playRecording(decode(sound));
}

void SoundSequence::playRecording(Instrument recording)
{
    const SampledSound& sound = recording.sound;
    if (m_samples.empty() && sound.sampleRate == m_sampleRate && sound.channels == m_channels) {
        m_samples = std::move(recording.samples);
        return;
    }
    const double step = sound.sampleRate / m_sampleRate;
    append(recording, takeFrames(quint64(double(recording.frames()) / step)), step, 1, false);
}

void SoundSequence::playNote(int note, double seconds)
{
    if (note == 0) {
        rest(seconds);
        return;
    }
    if (m_notes == mostNotes) {
        return;
    }
    ++m_notes;
    const quint64 frames = takeTime(seconds);
    const double gain = m_amplitude / highestAmplitude;
    if (!m_instrument) {
        appendTone(frequencyOf(note), frames, gain);
        return;
    }
    const double pitch = std::exp2((note - m_instrument->sound.baseNote) / 12.0);
    append(*m_instrument, frames, pitch * m_instrument->sound.sampleRate / m_sampleRate, gain, true);
}

void SoundSequence::wait(double seconds)
{
    playNote(m_heldNote, seconds);
}

void SoundSequence::rest(double seconds)
{
    m_samples.resize(m_samples.size() + takeTime(seconds) * quint64(m_channels));
}

quint64 SoundSequence::takeTime(double seconds)
{
    const double allowed = std::min(seconds, mostSecondsOfNotes - m_secondsOfNotes);
    m_secondsOfNotes += allowed;
    return takeFrames(quint64(allowed * m_sampleRate));
}

quint64 SoundSequence::takeFrames(quint64 frames) const
{
    const quint64 present = m_samples.size();
    return std::min(frames, (mostSamples - std::min(mostSamples, present)) / quint64(m_channels));
}

void SoundSequence::append(const Instrument& instrument, quint64 frames, double step, double gain, bool loops)
{
    const auto end = double(instrument.frames());
    const double loopEnd = loops ? double(instrument.sound.loopEnd) : 0;
    const double loopLength = loopEnd - double(instrument.sound.loopBegin);
    double position = 0;
    m_samples.reserve(m_samples.size() + frames * quint64(m_channels));
    for (quint64 i = 0; i < frames; ++i) {
        if (loopEnd > 0 && position >= loopEnd) {
            position = double(instrument.sound.loopBegin) + std::fmod(position - loopEnd, loopLength);
        }
        for (int channel = 0; channel < m_channels; ++channel) {
            m_samples.push_back(position < end ? toSample(instrument.at(position, channel) * gain) : qint16(0));
        }
        position += step;
    }
}

void SoundSequence::appendTone(double frequency, quint64 frames, double gain)
{
    const double squareShare = std::clamp(m_timbre / squareTimbre, 0.0, 1.0);
    const double anglePerFrame = 2 * std::numbers::pi * frequency / m_sampleRate;
    m_samples.reserve(m_samples.size() + frames * quint64(m_channels));
    for (quint64 i = 0; i < frames; ++i) {
        const double sine = std::sin(anglePerFrame * double(i));
        const double square = sine >= 0 ? 1 : -1;
        const double value = sine * (1 - squareShare) + square * squareShare;
        m_samples.insert(m_samples.end(), size_t(m_channels), toSample(value * gain * toneLevel));
    }
}

std::vector<qint16> SoundSequence::finish()
{
    if (m_samples.empty() && m_instrument) {
        playRecording(std::move(*m_instrument));
    }
    return std::move(m_samples);
}
