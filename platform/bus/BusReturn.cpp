// SPDX-License-Identifier: MIT
#include "BusReturn.h"

#include <sys/inotify.h>
#include <systemd/sd-event.h>

#include <ctime>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto firstDelay = 100ms;
/// After 0.1, 0.4, 1.6, 6.4 and 25.6 seconds.
constexpr int mostTries = 5;
constexpr int growth = 4;

QByteArray folderOf(const QByteArray& address)
{
    const QByteArray begin = "unix:path=";
    if (!address.startsWith(begin)) {
        return {};
    }
    QByteArray path = address.mid(begin.size());
    path.truncate(path.indexOf(';') < 0 ? path.size() : path.indexOf(';'));
    path.truncate(path.indexOf(',') < 0 ? path.size() : path.indexOf(','));
    return path.left(path.lastIndexOf('/'));
}

} // namespace

BusReturn::BusReturn(sd_event* loop, const QByteArray& address, std::function<void()> attempt)
    : m_loop(loop)
    , m_attempt(std::move(attempt))
    , m_folder(folderOf(address))
{
}

BusReturn::~BusReturn() = default;

void BusReturn::Release::operator()(sd_event_source* source) const
{
    sd_event_source_disable_unref(source);
}

void BusReturn::wait()
{
    if (!m_watch && !m_folder.isEmpty()) {
        sd_event_source* watch = nullptr;
        sd_event_add_inotify(
            m_loop, &watch, m_folder.constData(), IN_CREATE | IN_MOVED_TO,
            [](sd_event_source*, const inotify_event*, void* self) {
                auto* const waiting = static_cast<BusReturn*>(self);
                if (std::exchange(waiting->m_tries, 1) != 1) {
                    waiting->arm(firstDelay);
                }
                return 0;
            },
            this);
        m_watch.reset(watch);
    }
    if (m_tries >= mostTries) {
        return;
    }
    auto delay = firstDelay;
    for (int i = 0; i < m_tries; ++i) {
        delay *= growth;
    }
    ++m_tries;
    arm(delay);
}

void BusReturn::end()
{
    m_tries = 0;
    m_timer.reset();
    m_watch.reset();
}

void BusReturn::arm(std::chrono::milliseconds delay)
{
    sd_event_source* timer = nullptr;
    sd_event_add_time_relative(
        m_loop, &timer, CLOCK_MONOTONIC, uint64_t(std::chrono::microseconds(delay).count()), 0,
        [](sd_event_source*, uint64_t, void* self) {
            static_cast<BusReturn*>(self)->m_attempt();
            return 0;
        },
        this);
    m_timer.reset(timer);
}
