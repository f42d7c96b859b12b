// SPDX-License-Identifier: MIT
#pragma once

#include "SampledSound.h"

#include <optional>
#include <vector>

/// Renders what the commands of a 'snd ' resource play, one after the other, into samples.
///
/// The first sampled sound decides the rate and the number of channels; everything else is fitted to it. The limits are
/// those of a short sound: 64 notes, 10 seconds of notes and rests, 64 MiB of samples. What goes beyond is left out.
class SoundSequence final
{
public:
    /// A sequence of notes without a sampled sound: one channel at 44100 Hz.
    SoundSequence() = default;
    /// A sequence whose rate and channels are those of @p first.
    explicit SoundSequence(const SampledSound& first);

    double sampleRate() const noexcept { return m_sampleRate; }

    int channels() const noexcept { return m_channels; }

    /// The sampled sound that plays the notes from now on. Its coding must be plain.
    void install(const SampledSound& sound);
    /// Plays a sampled sound once, as recorded. Its coding must be plain.
    void playOnce(const SampledSound& sound);
    /// Plays a MIDI note (60 is middle C; 0 is a rest) with the installed sound, or with a synthetic tone.
    void playNote(int note, double seconds);
    /// Goes on with the held note, or is silent where there is none.
    void wait(double seconds);
    void rest(double seconds);

    /// Lets @p note sound in the waits that follow; 0 ends it.
    void hold(int note) { m_heldNote = note; }

    /// Loudness of the notes that follow, 0 to 255.
    void setAmplitude(int amplitude) { m_amplitude = amplitude; }

    /// Colour of the synthetic tone, from 0 (sine) to 254 (square).
    void setTimbre(int timbre) { m_timbre = timbre; }

    /// Plays the installed sound once when nothing has been played so far. Then gives away all samples, the channels
    /// of a frame side by side.
    std::vector<qint16> finish();

private:
    struct Instrument
    {
        SampledSound sound;
        std::vector<qint16> samples;

        quint64 frames() const { return samples.size() / size_t(sound.channels); }

        double at(double frame, int channel) const;
    };

    /// The sound with its samples; without any when the limit of what is decoded is reached.
    Instrument decode(const SampledSound& sound);
    void playRecording(Instrument recording);
    /// Frames for @p seconds, as far as the limits allow.
    quint64 takeTime(double seconds);
    quint64 takeFrames(quint64 frames) const;
    void append(const Instrument& instrument, quint64 frames, double step, double gain, bool loops);
    void appendTone(double frequency, quint64 frames, double gain);

    double m_sampleRate = 44100;
    int m_channels = 1;
    std::optional<Instrument> m_instrument;
    std::vector<qint16> m_samples;
    quint64 m_decodedSamples = 0;
    double m_secondsOfNotes = 0;
    int m_notes = 0;
    int m_heldNote = 0;
    int m_amplitude = 255;
    int m_timbre = 80;
};
