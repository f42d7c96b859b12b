// SPDX-License-Identifier: MIT
#pragma once

#include "DistributedNotificationCenter.h"

#include <QObject>

#include <cstdint>
#include <deque>

class MessageBus;

struct sd_bus;
struct sd_bus_message;
struct sd_bus_slot;
struct sd_event_source;

/// The bus side of the distributed notifications. Everything but construction belongs to the bus thread; observers
/// connect to the signal from whichever thread they live on.
///
/// A post is heard when the bus brings it back. Where the bus does not within half a second, or is not there at all,
/// the post is delivered without it, and an echo that comes after all is dropped.
class NotificationExchange final : public QObject
{
    Q_OBJECT

public:
    explicit NotificationExchange(MessageBus* bus);
    ~NotificationExchange() override;
    Q_DISABLE_COPY_MOVE(NotificationExchange)

    /// Subscribes to the notifications of all processes.
    void attach(sd_bus* connection);
    /// Sends @p notification; with a null @p connection it is delivered in this process alone.
    void post(sd_bus* connection, const DistributedNotification& notification);
    /// Delivers whatever the bus still owes.
    void deliverAll();

Q_SIGNALS:
    void posted(const DistributedNotification& notification);

private:
    struct PendingEcho
    {
        /// The message's number; 0 for one that the bus did not take.
        uint64_t cookie;
        qint64 deadline;
        DistributedNotification notification;
    };

    int receive(sd_bus_message* message);
    /// Delivers the posts in front as long as they meet @p condition.
    template <typename Condition>
    void deliverWhile(Condition condition);
    void armTimer();

    MessageBus* m_bus;
    sd_bus_slot* m_match = nullptr;
    sd_event_source* m_timer = nullptr;
    std::deque<PendingEcho> m_pendingEchoes;
};
