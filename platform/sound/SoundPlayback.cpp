// SPDX-License-Identifier: MIT
#include "SoundPlayback.h"

#include "SoundSource.h"

#include <pulse/operation.h>
#include <pulse/proplist.h>
#include <pulse/stream.h>

#include <algorithm>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// Half of the time that a server may keep silent: then it is asked for a sign of life.
constexpr auto quietTime = SoundServer::patience / 2;
/// How long a server that lives may take no more of the sound: outputs take up to two seconds of it at once.
constexpr std::chrono::seconds longestStall{3};

pa_stream* newStream(pa_context* context, const pa_sample_spec& spec)
{
    pa_proplist* properties = pa_proplist_new();
    // PipeWire takes the length of the buffer for the latency that is wanted, unless it is told a limit.
    pa_proplist_sets(properties, "node.max-latency", "256/48000");
    pa_stream* stream = pa_stream_new_with_proplist(context, "Sound", &spec, nullptr, properties);
    pa_proplist_free(properties);
    return stream;
}

} // namespace

/// A playback stream of the library. Made, used and destroyed with the server locked.
class SoundPlayback::Stream final
{
    Q_DISABLE_COPY_MOVE(Stream)

public:
    Stream(SoundServer& server, pa_context* context, const SoundFormat& format);
    ~Stream();

    bool isCreating() const { return m_stream != nullptr && pa_stream_get_state(m_stream) == PA_STREAM_CREATING; }

    bool isReady() const { return m_stream != nullptr && pa_stream_get_state(m_stream) == PA_STREAM_READY; }

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
        SoundServer& server;
        pa_operation* operation = nullptr;
        bool answered = false;

        void forget();
        static void receiveAnswer(pa_stream* stream, int success, void* request);
    };

    void noteStart();

    static void notify(void* self) { static_cast<Stream*>(self)->m_server.notifyWaiting(); }

    SoundServer& m_server;
    pa_sample_spec m_spec;
    pa_stream* m_stream;
    std::optional<Clock::time_point> m_startTime;
    size_t m_samplesWritten = 0;
    Request m_drain{m_server};
    Request m_signOfLife{m_server};
};

SoundPlayback::Stream::Stream(SoundServer& server, pa_context* context, const SoundFormat& format)
    : m_server(server)
    , m_spec{PA_SAMPLE_FLOAT32NE, uint32_t(format.rate), uint8_t(format.channels)}
    , m_stream(newStream(context, m_spec))
{
    if (m_stream == nullptr) {
        return;
    }
    pa_stream_set_state_callback(
        m_stream, [](pa_stream*, void* self) { notify(self); }, this);
    pa_stream_set_write_callback(
        m_stream, [](pa_stream*, size_t, void* self) { notify(self); }, this);
    pa_stream_set_started_callback(
        m_stream, [](pa_stream*, void* self) { static_cast<Stream*>(self)->noteStart(); }, this);
    // No device named: the default output of this moment. The default buffer of two seconds, filled before the stream
    // starts: for a shorter one the output would change its latency first, which may delay the start by seconds.
    pa_stream_connect_playback(m_stream, nullptr, nullptr, PA_STREAM_NOFLAGS, nullptr, nullptr);
}

SoundPlayback::Stream::~Stream()
{
    m_drain.forget();
    m_signOfLife.forget();
    if (m_stream == nullptr) {
        return;
    }
    pa_stream_set_state_callback(m_stream, nullptr, nullptr);
    pa_stream_set_write_callback(m_stream, nullptr, nullptr);
    pa_stream_set_started_callback(m_stream, nullptr, nullptr);
    pa_stream_disconnect(m_stream);
    pa_stream_unref(m_stream);
}

size_t SoundPlayback::Stream::writableSamples() const
{
    const size_t bytes = pa_stream_writable_size(m_stream);
    const size_t samples = bytes == size_t(-1) ? 0 : bytes / sizeof(float);
    return samples - samples % m_spec.channels;
}

bool SoundPlayback::Stream::write(std::span<const float> samples)
{
    if (pa_stream_write(m_stream, samples.data(), samples.size_bytes(), nullptr, 0, PA_SEEK_RELATIVE) < 0) {
        return false;
    }
    m_samplesWritten += samples.size();
    return true;
}

void SoundPlayback::Stream::start()
{
    if (pa_operation* operation = pa_stream_trigger(m_stream, nullptr, nullptr)) {
        pa_operation_unref(operation);
    }
}

void SoundPlayback::Stream::noteStart()
{
    // Told again after each gap in the sound: the first one counts.
    m_startTime = m_startTime.value_or(Clock::now());
    m_server.notifyWaiting();
}

SoundPlayback::Clock::time_point SoundPlayback::Stream::endOfWritten() const
{
    return *m_startTime + std::chrono::microseconds(pa_bytes_to_usec(m_samplesWritten * sizeof(float), &m_spec));
}

void SoundPlayback::Stream::requestDrain()
{
    m_drain.operation = pa_stream_drain(m_stream, Request::receiveAnswer, &m_drain);
}

void SoundPlayback::Stream::requestSignOfLife()
{
    m_signOfLife.forget();
    m_signOfLife.operation = pa_stream_update_timing_info(m_stream, Request::receiveAnswer, &m_signOfLife);
}

void SoundPlayback::Stream::Request::forget()
{
    answered = false;
    if (operation != nullptr) {
        pa_operation_cancel(operation);
        pa_operation_unref(std::exchange(operation, nullptr));
    }
}

void SoundPlayback::Stream::Request::receiveAnswer(pa_stream* /*stream*/, int /*success*/, void* request)
{
    auto* self = static_cast<Request*>(request);
    self->answered = true;
    self->server.notifyWaiting();
}

Result<SoundPlayback::End> SoundPlayback::run(SoundSource& source)
{
    Lock lock(m_server);
    const std::unique_ptr<Stream> stream = openStream(lock, source.format());
    if (stream && writeAll(lock, *stream, source) && waitUntilHeard(lock, *stream)) {
        return End::PlayedToTheEnd;
    }
    if (m_stopped) {
        return End::Stopped;
    }
    return Failure{m_error};
}

void SoundPlayback::stop()
{
    const Lock lock(m_server);
    m_stopped = true;
    m_server.notifyWaiting();
}

std::unique_ptr<SoundPlayback::Stream> SoundPlayback::openStream(Lock& lock, const SoundFormat& format)
{
    pa_context* context = m_server.waitForContext(lock, SoundServer::patience);
    if (context == nullptr) {
        m_server.disconnect();
        fail(u"no sound server (%1)"_s.arg(m_server.lastError()));
        return {};
    }
    if (m_stopped) {
        return {};
    }
    auto stream = std::make_unique<Stream>(m_server, context, format);
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

bool SoundPlayback::writeAll(Lock& lock, Stream& stream, SoundSource& source)
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

bool SoundPlayback::write(Lock& lock, Stream& stream, std::span<const float> samples)
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

bool SoundPlayback::waitUntilHeard(Lock& lock, Stream& stream)
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
bool SoundPlayback::waitFor(Lock& lock, Stream& stream, Condition condition)
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
