// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <chrono>
#include <cstddef>

/// Says which events of a burst are heard: of each code at most 20 in any second, and none within 20 ms of the one
/// before, in which several would only be louder. What is not heard at once is not heard at all. Values only: whoever
/// asks tells the time.
class EventLimiter final
{
public:
    using Time = std::chrono::steady_clock::time_point;

    static constexpr size_t codes = 80;
    static constexpr size_t mostInAPeriod = 20;
    static constexpr std::chrono::milliseconds period{1000};
    static constexpr std::chrono::milliseconds shortestGap{20};

    /// Whether the event of @p code that happens @p now, no earlier than those before, is heard. Never for a code
    /// outside 0 to 79.
    bool admit(int code, Time now);

private:
    /// When the last events of a code were heard: a ring, in which the next one takes the place of the oldest.
    struct Heard
    {
        std::array<Time, mostInAPeriod> times{};
        size_t next = 0;
        size_t count = 0;
    };

    std::array<Heard, codes> m_heard{};
};
