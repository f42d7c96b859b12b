// SPDX-License-Identifier: MIT
#pragma once

#include <pulse/simple.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <thread>

/// Listens to the monitor of the output "speakers" and notes when the first sample of a sound arrives. It asks for
/// every millisecond of sound by itself, so that the silent output, which renders for its most impatient client, does
/// too.
class Listener final
{
public:
    /// How long the first sample is waited for.
    static constexpr std::chrono::seconds patience{3};

    /// @p threshold is what a sample has to exceed, of a full scale of 1.
    explicit Listener(float threshold = 0.05F)
        : m_threshold(threshold)
        , m_thread([this](const std::stop_token& stop) { listen(stop); })
    {
    }

    /// Milliseconds from the call of @p play to the first sample; more than any target when there is none.
    template <typename Play>
    double millisecondsToFirstSample(Play play)
    {
        const auto start = Clock::now();
        m_isArmed = true;
        play();
        while (m_isArmed && Clock::now() - start < patience) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return m_isArmed ? 1e6 : std::chrono::duration<double, std::milli>(m_firstSample.load() - start).count();
    }

private:
    using Clock = std::chrono::steady_clock;

    void listen(const std::stop_token& stop)
    {
        const pa_sample_spec spec = {PA_SAMPLE_FLOAT32NE, 48000, 1};
        std::array<float, 48> block = {};
        const pa_buffer_attr attributes = {uint32_t(-1), uint32_t(-1), uint32_t(-1), uint32_t(-1), sizeof block};
        pa_simple* stream = pa_simple_new(nullptr, "Listener", PA_STREAM_RECORD, "speakers.monitor", "Listener", &spec,
            nullptr, &attributes, nullptr);
        while (!stop.stop_requested() && pa_simple_read(stream, block.data(), sizeof block, nullptr) >= 0) {
            const bool isHeard =
                std::any_of(block.begin(), block.end(), [this](float sample) { return sample > m_threshold; });
            if (isHeard && m_isArmed) {
                m_firstSample = Clock::now();
                m_isArmed = false;
            }
        }
        pa_simple_free(stream);
    }

    const float m_threshold;
    std::atomic<bool> m_isArmed = false;
    std::atomic<Clock::time_point> m_firstSample;
    std::jthread m_thread;
};
