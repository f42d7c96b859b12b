// SPDX-License-Identifier: MIT
#include "DecodedSoundPlayback.h"

#include "DecodedSounds.h"
#include "SoundStream.h"

#include <pulse/context.h>
#include <pulse/mainloop-api.h>
#include <pulse/rtclock.h>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// How long after its time a sound may end: outputs take up to two seconds of it at once.
constexpr std::chrono::seconds longestStall{3};

} // namespace

DecodedSoundPlayback::DecodedSoundPlayback(std::shared_ptr<const DecodedSound> sound, float gain)
    : m_sound(std::move(sound))
    , m_gain(gain)
{
}

DecodedSoundPlayback::~DecodedSoundPlayback() = default;

bool DecodedSoundPlayback::start(std::function<void(const End&)> ended)
{
    const SoundServer::Lock lock(m_server);
    pa_context* const context = m_server.context();
    if (context == nullptr) {
        return false;
    }
    m_self = shared_from_this();
    m_ended = std::move(ended);
    m_context = pa_context_ref(context);
    const auto takeTime = [](pa_mainloop_api* loop, pa_time_event*, const timeval*, void* self) {
        static_cast<DecodedSoundPlayback*>(self)->takeTime(*loop);
    };
    m_timer = pa_context_rttime_new(context, pa_rtclock_now(), takeTime, this);
    wakeAt(Clock::now() + SoundServer::patience);
    m_stream =
        std::make_unique<SoundStream>(context, m_sound->format, SoundStream::Supply::AtOnce, [this] { advance(); });
    // Told already if the library refuses it.
    advance();
    return true;
}

void DecodedSoundPlayback::stop()
{
    const SoundServer::Lock lock(m_server);
    m_isStopped = true;
    // Also the waiting for a known end is cut short.
    m_end.reset();
    advance();
}

/// Takes the next step, if it is time for one. Not cut short by a stop while the server is about to make the stream,
/// which can be taken back only when it is there.
void DecodedSoundPlayback::advance()
{
    if (!m_stream || m_end || m_stream->isCreating()) {
        return;
    }
    if (m_isStopped) {
        finishSoon(SoundPlayback::End::Stopped);
    } else if (!m_stream->isReady()) {
        finishSoon(Failure{u"the sound server does not take it (%1)"_s.arg(m_server.lastError())});
    } else if (!m_isWritten) {
        supply();
    } else {
        awaitEnd();
    }
}

void DecodedSoundPlayback::supply()
{
    m_isWritten = true;
    std::span<const float> samples = m_sound->samples;
    std::vector<float> attenuated;
    if (m_gain != 1) {
        attenuated.resize(samples.size());
        std::ranges::transform(samples, attenuated.begin(), [this](float sample) { return sample * m_gain; });
        samples = attenuated;
    }
    if (!m_stream->write(samples)) {
        finishSoon(Failure{m_server.lastError()});
        return;
    }
    m_stream->start();
    m_stream->requestDrain();
    wakeAt(Clock::now() + DecodedSounds::longest + longestStall);
}

/// An output that takes much at once calls the end before it is heard: the clock knows better.
void DecodedSoundPlayback::awaitEnd()
{
    if (m_stream->hasStarted() && m_stream->isDrained()) {
        m_end = SoundPlayback::End::PlayedToTheEnd;
        wakeAt(m_stream->endOfWritten());
    }
}

/// From the timer, since a stream is not destroyed out of its own callback.
void DecodedSoundPlayback::finishSoon(End end)
{
    m_end = std::move(end);
    wakeAt(Clock::now());
}

void DecodedSoundPlayback::takeTime(const pa_mainloop_api& loop)
{
    if (!m_end && m_stream->isCreating()) {
        m_end = End(Failure{u"the sound server does not answer"_s});
        m_server.disconnect();
    }
    if (!m_end) {
        m_end = End(Failure{u"the output stands still"_s});
    }
    m_stream.reset();
    loop.time_free(m_timer);
    pa_context_unref(std::exchange(m_context, nullptr));
    const std::shared_ptr<DecodedSoundPlayback> self = std::exchange(m_self, nullptr);
    const auto ended = std::exchange(m_ended, nullptr);
    ended(*m_end);
}

void DecodedSoundPlayback::wakeAt(Clock::time_point time)
{
    const auto delay = std::chrono::ceil<std::chrono::microseconds>(time - Clock::now());
    pa_context_rttime_restart(m_context, m_timer, pa_rtclock_now() + pa_usec_t(std::max<qint64>(delay.count(), 0)));
}
