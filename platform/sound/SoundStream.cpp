// SPDX-License-Identifier: MIT
#include "SoundStream.h"

#include "SoundSource.h"

#include <pulse/operation.h>
#include <pulse/proplist.h>
#include <pulse/stream.h>

#include <utility>

namespace {

constexpr auto byDefault = uint32_t(-1);

pa_stream* newStream(pa_context* context, const pa_sample_spec& spec)
{
    pa_proplist* properties = pa_proplist_new();
    // PipeWire takes the length of the buffer for the latency that is wanted, unless it is told a limit.
    pa_proplist_sets(properties, "node.max-latency", "256/48000");
    pa_stream* stream = pa_stream_new_with_proplist(context, "Sound", &spec, nullptr, properties);
    pa_proplist_free(properties);
    return stream;
}

/// The server asks for more whenever two seconds have been played, and so never for a sound that is shorter. The
/// latency that the output gets, the buffer's length without twice that, is the one of the default buffer: for another
/// one the output would change its latency first, which may delay the start by seconds.
pa_buffer_attr bufferForAllAtOnce(const pa_sample_spec& spec)
{
    constexpr pa_usec_t seconds = 1'000'000;
    constexpr pa_usec_t period = 2 * seconds;
    constexpr pa_usec_t defaultLatency = 1'960'000;
    return {byDefault, uint32_t(pa_usec_to_bytes(defaultLatency + 2 * period, &spec)), byDefault,
        uint32_t(pa_usec_to_bytes(period, &spec)), byDefault};
}

} // namespace

SoundStream::SoundStream(pa_context* context, const SoundFormat& format, Supply supply, std::function<void()> changed)
    : m_changed(std::move(changed))
    , m_spec{PA_SAMPLE_FLOAT32NE, uint32_t(format.rate), uint8_t(format.channels)}
    , m_stream(newStream(context, m_spec))
{
    if (m_stream != nullptr) {
        connect(supply);
    }
}

void SoundStream::connect(Supply supply)
{
    pa_stream_set_state_callback(
        m_stream, [](pa_stream*, void* self) { notify(self); }, this);
    pa_stream_set_started_callback(
        m_stream, [](pa_stream*, void* self) { static_cast<SoundStream*>(self)->noteStart(); }, this);
    // No device named: the default output of this moment. The default buffer is two seconds, filled before it starts.
    if (supply == Supply::Piecewise) {
        pa_stream_set_write_callback(
            m_stream, [](pa_stream*, size_t, void* self) { notify(self); }, this);
        pa_stream_connect_playback(m_stream, nullptr, nullptr, PA_STREAM_NOFLAGS, nullptr, nullptr);
    } else {
        const pa_buffer_attr buffer = bufferForAllAtOnce(m_spec);
        pa_stream_connect_playback(m_stream, nullptr, &buffer, PA_STREAM_NOFLAGS, nullptr, nullptr);
    }
}

SoundStream::~SoundStream()
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

bool SoundStream::isCreating() const
{
    return m_stream != nullptr && pa_stream_get_state(m_stream) == PA_STREAM_CREATING;
}

bool SoundStream::isReady() const
{
    return m_stream != nullptr && pa_stream_get_state(m_stream) == PA_STREAM_READY;
}

size_t SoundStream::writableSamples() const
{
    const size_t bytes = pa_stream_writable_size(m_stream);
    const size_t samples = bytes == size_t(-1) ? 0 : bytes / sizeof(float);
    return samples - samples % m_spec.channels;
}

bool SoundStream::write(std::span<const float> samples)
{
    if (pa_stream_write(m_stream, samples.data(), samples.size_bytes(), nullptr, 0, PA_SEEK_RELATIVE) < 0) {
        return false;
    }
    m_samplesWritten += samples.size();
    return true;
}

void SoundStream::start()
{
    if (pa_operation* operation = pa_stream_trigger(m_stream, nullptr, nullptr)) {
        pa_operation_unref(operation);
    }
}

void SoundStream::noteStart()
{
    // Told again after each gap in the sound: the first one counts.
    m_startTime = m_startTime.value_or(Clock::now());
    m_changed();
}

SoundStream::Clock::time_point SoundStream::endOfWritten() const
{
    return *m_startTime + std::chrono::microseconds(pa_bytes_to_usec(m_samplesWritten * sizeof(float), &m_spec));
}

void SoundStream::requestDrain()
{
    m_drain.operation = pa_stream_drain(m_stream, Request::receiveAnswer, &m_drain);
}

void SoundStream::requestSignOfLife()
{
    m_signOfLife.forget();
    m_signOfLife.operation = pa_stream_update_timing_info(m_stream, Request::receiveAnswer, &m_signOfLife);
}

void SoundStream::Request::forget()
{
    answered = false;
    if (operation != nullptr) {
        pa_operation_cancel(operation);
        pa_operation_unref(std::exchange(operation, nullptr));
    }
}

void SoundStream::Request::receiveAnswer(pa_stream* /*stream*/, int /*success*/, void* request)
{
    auto* self = static_cast<Request*>(request);
    self->answered = true;
    self->stream.m_changed();
}
