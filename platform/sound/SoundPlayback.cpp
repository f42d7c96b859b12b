// SPDX-License-Identifier: MIT
#include "SoundPlayback.h"

#include "SoundSource.h"
#include "SoundStream.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Half of the time that a server may keep silent: then it is asked for a sign of life.
constexpr auto quietTime = SoundServer::patience / 2;
/// How long a server that lives may take no more of the sound: outputs take up to two seconds of it at once.
constexpr std::chrono::seconds longestStall{3};

} // namespace

Result<SoundPlayback::End> SoundPlayback::run(SoundSource& source)
{
    Lock lock(m_server);
    const std::unique_ptr<SoundStream> stream = openStream(lock, source.format());
    if (stream && writeAll(lock, *stream, source) && waitUntilHeard(lock, *stream)) {
        return End::PlayedToTheEnd;
    }
    if (m_stopped) {
        return End::Stopped;
    }
    return m_error.isEmpty() ? Result(End::Unheard) : Failure{m_error};
}

void SoundPlayback::stop()
{
    const Lock lock(m_server);
    m_stopped = true;
    m_server.notifyWaiting();
}

std::unique_ptr<SoundStream> SoundPlayback::openStream(Lock& lock, const SoundFormat& format)
{
    pa_context* context = m_server.waitForContext(lock, SoundServer::patience);
    if (context == nullptr) {
        m_server.disconnect();
        m_server.reportAbsence();
        return {};
    }
    if (m_stopped) {
        return {};
    }
    auto stream = std::make_unique<SoundStream>(
        context, format, SoundStream::Supply::Piecewise, [this] { m_server.notifyWaiting(); });
    // Not cut short by a stop: a stream that the server is about to make can only be taken back when it is there.
    if (!m_server.wait(lock, SoundServer::patience, [&stream] { return !stream->isCreating(); })) {
        m_server.disconnect();
    }
    if (!stream->isReady()) {
        fail(u"the sound server does not take it (%1)"_s.arg(m_server.lastError()));
        return {};
    }
    return stream;
}

bool SoundPlayback::writeAll(Lock& lock, SoundStream& stream, SoundSource& source)
{
    for (;;) {
        lock.unlock();
        const std::span<const float> samples = attenuated(source.nextSamples());
        lock.lock();
        if (samples.empty()) {
            return true;
        }
        if (!write(lock, stream, samples)) {
            return false;
        }
    }
}

std::span<const float> SoundPlayback::attenuated(std::span<const float> samples)
{
    if (m_gain == 1) {
        return samples;
    }
    m_attenuated.resize(samples.size());
    std::ranges::transform(samples, m_attenuated.begin(), [this](float sample) { return sample * m_gain; });
    return m_attenuated;
}

bool SoundPlayback::write(Lock& lock, SoundStream& stream, std::span<const float> samples)
{
    while (!samples.empty()) {
        if (!waitFor(lock, stream, [&stream] { return stream.writableSamples() > 0; })) {
            return false;
        }
        const auto part = samples.first(std::min(samples.size(), stream.writableSamples()));
        if (!stream.write(part)) {
            return fail(m_server.lastError());
        }
        samples = samples.subspan(part.size());
    }
    return true;
}

bool SoundPlayback::waitUntilHeard(Lock& lock, SoundStream& stream)
{
    stream.start();
    if (!waitFor(lock, stream, [&stream] { return stream.hasStarted(); })) {
        return false;
    }
    // An output that takes much at once calls the end before it is heard: the clock knows better.
    const auto rest = std::chrono::ceil<std::chrono::milliseconds>(stream.endOfWritten() - Clock::now());
    m_server.wait(lock, rest, [this, &stream] { return m_stopped || !stream.isReady(); });
    stream.requestDrain();
    return waitFor(lock, stream, [&stream] { return stream.isDrained(); });
}

/// Waits for @p condition on the stream; false when it does not come true, with the reason unless stopped.
template <typename Condition>
bool SoundPlayback::waitFor(Lock& lock, SoundStream& stream, Condition condition)
{
    const auto isOver = [&] { return m_stopped || !stream.isReady() || condition(); };
    const auto end = Clock::now() + longestStall;
    while (!m_server.wait(lock, quietTime, isOver)) {
        stream.requestSignOfLife();
        if (!m_server.wait(lock, quietTime, [&] { return isOver() || stream.gaveSignOfLife(); })) {
            m_server.disconnect();
            return fail(u"the sound server does not answer"_s);
        }
        if (Clock::now() > end) {
            return fail(u"the output stands still"_s);
        }
    }
    if (!stream.isReady()) {
        return fail(u"the sound server ended it (%1)"_s.arg(m_server.lastError()));
    }
    return !m_stopped;
}

bool SoundPlayback::fail(const QString& reason)
{
    m_error = reason;
    return false;
}
