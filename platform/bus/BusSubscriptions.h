// SPDX-License-Identifier: MIT
#pragma once

#include "MessageBus.h"

#include <QObject>
#include <QString>

#include <list>
#include <memory>
#include <vector>

struct sd_bus_message;
struct sd_bus_slot;

/// Carries what the bus thread hears to the thread of whoever listens.
class BusRelay final : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void heard(const MessageBus::Signal& signal);
    void ownerChanged(const QString& owner);
};

/// The signals and services of a bus that this process follows, for the bus thread alone. They outlive a connection:
/// the next one is asked for the same again.
class BusSubscriptions final
{
public:
    BusSubscriptions() = default;
    ~BusSubscriptions();
    Q_DISABLE_COPY_MOVE(BusSubscriptions)

    /// Follows the signals of @p pattern until forget().
    void subscribe(const MessageBus::SignalPattern& pattern, const std::shared_ptr<BusRelay>& relay);
    /// Tells the owner of the service @p name, empty for none: now, or once it is known, and at every change.
    void followService(const QByteArray& name, const std::shared_ptr<BusRelay>& relay);
    /// Ends what was begun with this relay.
    void forget(const BusRelay* relay);

    /// Asks a new connection for all of it; without one (null) no service has an owner.
    void attach(sd_bus* connection);

private:
    struct Release
    {
        void operator()(sd_bus_slot* slot) const;
    };

    using Slot = std::unique_ptr<sd_bus_slot, Release>;

    struct Service
    {
        BusSubscriptions* subscriptions = nullptr;
        QByteArray name;
        /// The unique name of the connection that has the service; empty for none.
        QByteArray owner;
        bool isKnown = false;
        std::vector<std::shared_ptr<BusRelay>> followers;
        Slot changes;
        Slot question;
    };

    struct Subscription
    {
        MessageBus::SignalPattern pattern;
        std::shared_ptr<BusRelay> relay;
        /// Null when anybody may send it.
        const Service* service = nullptr;
        Slot match;
    };

    Service& service(const QByteArray& name);
    void attach(Service& service) const;
    void attach(Subscription& subscription) const;
    static void setOwner(Service& service, const char* owner);
    static int ownerChanged(sd_bus_message* message, Service& service);
    static int receive(sd_bus_message* message, const Subscription& subscription);

    sd_bus* m_connection = nullptr;
    std::list<Service> m_services;
    std::list<Subscription> m_subscriptions;
};
