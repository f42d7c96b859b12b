// SPDX-License-Identifier: MIT
#include "NotificationExchange.h"

#include "MessageBus.h"
#include "NotificationMessage.h"

#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>

#include <chrono>
#include <cstring>

using namespace std::chrono_literals;

namespace {

/// A bus that works brings a post back within a millisecond or two.
constexpr auto echoTimeout = 500ms;

qint64 microsecondsNow()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::microseconds>(now).count();
}

} // namespace

NotificationExchange::NotificationExchange(MessageBus* bus)
    : m_bus(bus)
{
}

NotificationExchange::~NotificationExchange()
{
    sd_bus_slot_unref(m_match);
    sd_event_source_unref(m_timer);
}

void NotificationExchange::attach(sd_bus* connection)
{
    if (connection == nullptr) {
        return;
    }
    sd_bus_match_signal_async(
        connection, &m_match, nullptr, NotificationMessage::path, NotificationMessage::interface,
        NotificationMessage::member,
        [](sd_bus_message* message, void* self, sd_bus_error*) {
            return static_cast<NotificationExchange*>(self)->receive(message);
        },
        nullptr, this);
}

void NotificationExchange::post(sd_bus* connection, const DistributedNotification& notification)
{
    uint64_t cookie = 0;
    sd_bus_message* message = nullptr;
    if (connection != nullptr &&
        sd_bus_message_new_signal(connection, &message, NotificationMessage::path, NotificationMessage::interface,
            NotificationMessage::member) >= 0 &&
        NotificationMessage::append(message, notification)) {
        sd_bus_send(connection, message, &cookie);
    }
    sd_bus_message_unref(message);

    const auto timeout = std::chrono::duration_cast<std::chrono::microseconds>(echoTimeout);
    m_pendingEchoes.push_back({cookie, microsecondsNow() + timeout.count(), notification});
    if (connection == nullptr) {
        deliverAll();
    } else if (m_pendingEchoes.size() == 1) {
        armTimer();
    }
}

int NotificationExchange::receive(sd_bus_message* message)
{
    const char* ownName = nullptr;
    const char* sender = sd_bus_message_get_sender(message);
    if (sender != nullptr && sd_bus_get_unique_name(sd_bus_message_get_bus(message), &ownName) >= 0 &&
        std::strcmp(sender, ownName) == 0) {
        uint64_t cookie = 0;
        sd_bus_message_get_cookie(message, &cookie);
        deliverWhile([cookie](const PendingEcho& echo) { return echo.cookie <= cookie; });
    } else if (auto notification = NotificationMessage::read(message)) {
        notification->sender = QString::fromUtf8(sender);
        Q_EMIT posted(*notification);
    }
    return 0;
}

void NotificationExchange::deliverAll()
{
    deliverWhile([](const PendingEcho&) { return true; });
}

template <typename Condition>
void NotificationExchange::deliverWhile(Condition condition)
{
    while (!m_pendingEchoes.empty() && condition(m_pendingEchoes.front())) {
        const DistributedNotification notification = m_pendingEchoes.front().notification;
        m_pendingEchoes.pop_front();
        Q_EMIT posted(notification);
    }
    armTimer();
}

void NotificationExchange::armTimer()
{
    if (m_pendingEchoes.empty()) {
        if (m_timer != nullptr) {
            sd_event_source_set_enabled(m_timer, SD_EVENT_OFF);
        }
        return;
    }
    const auto deadline = uint64_t(m_pendingEchoes.front().deadline);
    if (m_timer != nullptr) {
        sd_event_source_set_time(m_timer, deadline);
        sd_event_source_set_enabled(m_timer, SD_EVENT_ONESHOT);
        return;
    }
    sd_event_add_time(
        m_bus->eventLoop(), &m_timer, CLOCK_MONOTONIC, deadline, 0,
        [](sd_event_source*, uint64_t, void* self) {
            const auto isOverdue = [now = microsecondsNow()](const PendingEcho& echo) { return echo.deadline <= now; };
            static_cast<NotificationExchange*>(self)->deliverWhile(isOverdue);
            return 0;
        },
        this);
}
