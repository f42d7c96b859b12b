// SPDX-License-Identifier: MIT
#pragma once

#include "SoundPlayback.h"

#include <functional>
#include <memory>
#include <optional>

struct DecodedSound;
class SoundStream;

struct pa_context;
struct pa_mainloop_api;
struct pa_time_event;

/// A short sound that is decoded already, on its way to the default output. It needs no thread of its own: all of it is
/// handed to the server at once, and the server's answers, on the library's thread, take it from one step to the next.
/// From start() to the end it keeps itself alive.
class DecodedSoundPlayback final : public std::enable_shared_from_this<DecodedSoundPlayback>
{
    Q_DISABLE_COPY_MOVE(DecodedSoundPlayback)

public:
    using End = Result<SoundPlayback::End>;

    /// @p gain is what the samples are multiplied by, 0 to 1.
    DecodedSoundPlayback(std::shared_ptr<const DecodedSound> sound, float gain);
    ~DecodedSoundPlayback();

    /// Begins, and returns at once. False, with nothing begun, when no connection to the server stands. Else @p ended
    /// is called once, on the library's thread with the server locked: when the last sample has been heard, after
    /// stop(), or with the reason why it cannot go on.
    bool start(std::function<void(const End&)> ended);
    /// Falls silent; returns at once. Without the server's lock held.
    void stop();

private:
    using Clock = std::chrono::steady_clock;

    void advance();
    void supply();
    void awaitEnd();
    void finishSoon(End end);
    void takeTime(const pa_mainloop_api& loop);
    void wakeAt(Clock::time_point time);

    SoundServer& m_server = SoundServer::instance();
    const std::shared_ptr<const DecodedSound> m_sound;
    const float m_gain;
    pa_context* m_context = nullptr;
    pa_time_event* m_timer = nullptr;
    std::unique_ptr<SoundStream> m_stream;
    std::function<void(const End&)> m_ended;
    std::shared_ptr<DecodedSoundPlayback> m_self;
    bool m_isWritten = false;
    bool m_isStopped = false;
    /// How it ends, as soon as that is known.
    std::optional<End> m_end;
};
