// SPDX-License-Identifier: MIT
#include "EventLimiter.h"

bool EventLimiter::admit(int code, Time now)
{
    if (code < 0 || size_t(code) >= codes) {
        return false;
    }
    Heard& heard = m_heard[size_t(code)];
    const bool isFull = heard.count == mostInAPeriod;
    const Time last = heard.times[(heard.next + mostInAPeriod - 1) % mostInAPeriod];
    if ((heard.count > 0 && now - last < shortestGap) || (isFull && now - heard.times[heard.next] < period)) {
        return false;
    }
    heard.times[heard.next] = now;
    heard.next = (heard.next + 1) % mostInAPeriod;
    heard.count += isFull ? 0 : 1;
    return true;
}
