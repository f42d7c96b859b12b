// SPDX-License-Identifier: MIT
#pragma once

#include "SoundServer.h"

#include <QtGlobal>

#include <pulse/def.h>
#include <pulse/sample.h>

#include <chrono>
#include <functional>
#include <optional>
#include <span>

struct SoundFormat;

struct pa_operation;
struct pa_stream;

/// A playback stream on the default output of the moment, as long as this object lives. Made, used and destroyed with
/// the server locked, and never destroyed out of its own callback.
class SoundStream final
{
    Q_DISABLE_COPY_MOVE(SoundStream)

public:
    using Clock = std::chrono::steady_clock;

    enum class Supply {
        /// The server keeps asking for more.
        Piecewise,
        /// All is written at once, 2 s at most: then the server asks for nothing more, and wakes nobody.
        AtOnce,
    };

    /// Asks the server for it. @p changed is called, with the server locked, whenever something that can be asked for
    /// below is another than before.
    SoundStream(pa_context* context, const SoundFormat& format, Supply supply, std::function<void()> changed);
    ~SoundStream();

    bool isCreating() const;

    bool isReady() const;

    /// How many samples the server takes now, in whole frames.
    size_t writableSamples() const;
    bool write(std::span<const float> samples);
    /// Has the output begin although the buffer is not full: there is no more to come.
    void start();

    bool hasStarted() const { return m_startTime.has_value(); }

    /// When the last sample written so far is heard at the earliest. The stream must have started.
    Clock::time_point endOfWritten() const;

    /// Asks the server to tell when the output has played everything.
    void requestDrain();

    bool isDrained() const { return m_drain.answered; }

    /// Asks the server for anything at all.
    void requestSignOfLife();

    bool gaveSignOfLife() const { return m_signOfLife.answered; }

private:
    /// Something that the server was asked; the answer is not waited for.
    struct Request
    {
        SoundStream& stream;
        pa_operation* operation = nullptr;
        bool answered = false;

        void forget();
        static void receiveAnswer(pa_stream* stream, int success, void* request);
    };

    void connect(Supply supply);
    void noteStart();

    static void notify(void* self) { static_cast<SoundStream*>(self)->m_changed(); }

    std::function<void()> m_changed;
    pa_sample_spec m_spec;
    pa_stream* m_stream;
    std::optional<Clock::time_point> m_startTime;
    size_t m_samplesWritten = 0;
    Request m_drain{*this};
    Request m_signOfLife{*this};
};
