// SPDX-License-Identifier: MIT
#include "ServerReturn.h"

#include <sys/epoll.h>
#include <sys/inotify.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstdint>
#include <utility>

using namespace std::chrono_literals;

namespace {

/// A socket appears a moment before its server listens.
constexpr std::chrono::milliseconds firstDelay = 100ms;
/// After 0.1, 0.4, 1.6, 6.4 and 25.6 seconds.
constexpr int mostTries = 5;
constexpr int growth = 4;

void follow(int group, int descriptor)
{
    epoll_event event{};
    event.events = EPOLLIN;
    ::epoll_ctl(group, EPOLL_CTL_ADD, descriptor, &event);
}

} // namespace

ServerReturn::ServerReturn(QByteArray socket)
    : m_socket(std::move(socket))
    , m_descriptor(::epoll_create1(EPOLL_CLOEXEC))
    , m_timer(::timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK))
{
    follow(m_descriptor, m_timer);
}

ServerReturn::~ServerReturn()
{
    end();
    ::close(m_timer);
    ::close(m_descriptor);
}

void ServerReturn::wait()
{
    if (m_folders < 0) {
        m_folders = ::inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
        follow(m_descriptor, m_folders);
        watchFolders();
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

void ServerReturn::end()
{
    m_tries = 0;
    arm(0ms);
    if (m_folders >= 0) {
        ::close(std::exchange(m_folders, -1));
        m_awaited.clear();
    }
}

bool ServerReturn::isDue()
{
    if (hasAppeared()) {
        watchFolders();
        m_tries = 1;
        arm(firstDelay);
    }
    uint64_t expirations = 0;
    return ::read(m_timer, &expirations, sizeof expirations) == sizeof expirations;
}

/// All folders on the way to the socket, as far as they are there, the outermost first: what is made in one of them
/// after that is told of, however quickly it is made.
void ServerReturn::watchFolders()
{
    for (qsizetype at = m_socket.indexOf('/'); at >= 0;) {
        const qsizetype next = m_socket.indexOf('/', at + 1);
        const QByteArray folder = m_socket.left(at + 1);
        const int watch =
            ::inotify_add_watch(m_folders, folder.constData(), IN_CREATE | IN_MOVED_TO | quint32(IN_ONLYDIR));
        if (watch < 0) {
            return;
        }
        m_awaited.insert(watch, m_socket.mid(at + 1, next < 0 ? -1 : next - at - 1));
        at = next;
    }
}

/// Whether the socket or a folder on the way to it is among what has been made.
bool ServerReturn::hasAppeared()
{
    alignas(inotify_event) std::array<char, 16 * (sizeof(inotify_event) + NAME_MAX + 1)> events{};
    bool isAmongThem = false;
    ssize_t count = 0;
    while ((count = ::read(m_folders, events.data(), events.size())) > 0) {
        for (ssize_t at = 0; at + ssize_t(sizeof(inotify_event)) <= count;) {
            const auto* const event = reinterpret_cast<const inotify_event*>(events.data() + at);
            // The name is filled up with zeros.
            isAmongThem |= event->len > 0 && m_awaited.value(event->wd) == event->name;
            at += ssize_t(sizeof(inotify_event)) + event->len;
        }
    }
    return isAmongThem;
}

void ServerReturn::arm(std::chrono::milliseconds delay) const
{
    const auto seconds = std::chrono::floor<std::chrono::seconds>(delay);
    itimerspec time{};
    time.it_value.tv_sec = seconds.count();
    time.it_value.tv_nsec = std::chrono::nanoseconds(delay - seconds).count();
    ::timerfd_settime(m_timer, 0, &time, nullptr);
}
