// SPDX-License-Identifier: MIT
#include "BusSubscriptions.h"

#include "BusValues.h"

#include <product/Product.h>

#include <QLoggingCategory>

#include <systemd/sd-bus.h>

#include <algorithm>
#include <utility>

namespace {

Q_LOGGING_CATEGORY(log, PRODUCT_NAME ".bus")

constexpr auto bus = "org.freedesktop.DBus";
constexpr auto busPath = "/org/freedesktop/DBus";

/// Where there is none, the library ends the connection when the bus refuses a subscription.
int installed(sd_bus_message* reply, void* /*userData*/, sd_bus_error* /*error*/)
{
    if (const sd_bus_error* const error = sd_bus_message_get_error(reply); error != nullptr) {
        qCInfo(log).noquote() << "a subscription was refused:" << error->message;
    }
    return 1;
}

const char* orNull(const QByteArray& text)
{
    return text.isEmpty() ? nullptr : text.constData();
}

} // namespace

BusSubscriptions::~BusSubscriptions() = default;

void BusSubscriptions::Release::operator()(sd_bus_slot* slot) const
{
    sd_bus_slot_unref(slot);
}

void BusSubscriptions::subscribe(const MessageBus::SignalPattern& pattern, const std::shared_ptr<BusRelay>& relay)
{
    const Service* sender = pattern.service.isEmpty() ? nullptr : &service(pattern.service);
    m_subscriptions.push_back({pattern, relay, sender, {}});
    attach(m_subscriptions.back());
}

void BusSubscriptions::followService(const QByteArray& name, const std::shared_ptr<BusRelay>& relay)
{
    Service& followed = service(name);
    if (followed.isKnown) {
        Q_EMIT relay->ownerChanged(QString::fromLatin1(followed.owner));
    }
    followed.followers.push_back(relay);
}

void BusSubscriptions::forget(const BusRelay* relay)
{
    m_subscriptions.remove_if([relay](const Subscription& subscription) { return subscription.relay.get() == relay; });
    for (Service& service : m_services) {
        std::erase_if(service.followers, [relay](const auto& follower) { return follower.get() == relay; });
    }
}

void BusSubscriptions::attach(sd_bus* connection)
{
    m_connection = connection;
    for (Service& service : m_services) {
        attach(service);
    }
    for (Subscription& subscription : m_subscriptions) {
        attach(subscription);
    }
}

/// Services stay: they are few, and the next one to follow them knows their owner at once.
BusSubscriptions::Service& BusSubscriptions::service(const QByteArray& name)
{
    const auto found = std::ranges::find(m_services, name, &Service::name);
    if (found != m_services.end()) {
        return *found;
    }
    Service& added = m_services.emplace_back();
    added.subscriptions = this;
    added.name = name;
    attach(added);
    return added;
}

void BusSubscriptions::attach(Service& service) const
{
    service.changes.reset();
    service.question.reset();
    if (m_connection == nullptr) {
        setOwner(service, "");
        return;
    }
    const QByteArray match = "type='signal',sender='org.freedesktop.DBus',path='/org/freedesktop/DBus',"
                             "interface='org.freedesktop.DBus',member='NameOwnerChanged',arg0='" +
                             service.name + '\'';
    sd_bus_slot* slot = nullptr;
    sd_bus_add_match_async(
        m_connection, &slot, match.constData(),
        [](sd_bus_message* message, void* followed, sd_bus_error*) {
            return ownerChanged(message, *static_cast<Service*>(followed));
        },
        installed, &service);
    service.changes.reset(std::exchange(slot, nullptr));
    sd_bus_call_method_async(
        m_connection, &slot, bus, busPath, bus, "GetNameOwner",
        [](sd_bus_message* reply, void* followed, sd_bus_error*) {
            const char* owner = "";
            if (sd_bus_message_is_method_error(reply, nullptr) > 0 || sd_bus_message_read(reply, "s", &owner) < 0) {
                owner = "";
            }
            setOwner(*static_cast<Service*>(followed), owner);
            return 1;
        },
        &service, "s", service.name.constData());
    service.question.reset(slot);
}

void BusSubscriptions::attach(Subscription& subscription) const
{
    subscription.match.reset();
    if (m_connection == nullptr) {
        return;
    }
    const MessageBus::SignalPattern& pattern = subscription.pattern;
    sd_bus_slot* slot = nullptr;
    sd_bus_match_signal_async(
        m_connection, &slot, orNull(pattern.service), orNull(pattern.path), orNull(pattern.interface),
        orNull(pattern.member),
        [](sd_bus_message* message, void* subscribed, sd_bus_error*) {
            return receive(message, *static_cast<const Subscription*>(subscribed));
        },
        installed, &subscription);
    subscription.match.reset(slot);
}

void BusSubscriptions::setOwner(Service& service, const char* owner)
{
    if (std::exchange(service.isKnown, true) && service.owner == owner) {
        return;
    }
    service.owner = owner;
    for (const auto& follower : service.followers) {
        Q_EMIT follower->ownerChanged(QString::fromLatin1(service.owner));
    }
}

int BusSubscriptions::ownerChanged(sd_bus_message* message, Service& service)
{
    const char* name = nullptr;
    const char* before = nullptr;
    const char* now = nullptr;
    // Others may send a signal of this name, too.
    if (qstrcmp(sd_bus_message_get_sender(message), bus) == 0 &&
        sd_bus_message_read(message, "sss", &name, &before, &now) > 0 && service.name == name) {
        setOwner(service, now);
    }
    return 0;
}

int BusSubscriptions::receive(sd_bus_message* message, const Subscription& subscription)
{
    // The library takes a signal of any sender for one of the service.
    const char* sender = sd_bus_message_get_sender(message);
    if (subscription.service != nullptr && subscription.service->owner != sender) {
        return 0;
    }
    Q_EMIT subscription.relay->heard({QString::fromUtf8(sd_bus_message_get_path(message)),
        QString::fromUtf8(sd_bus_message_get_member(message)), BusValues::readAll(message), QString::fromUtf8(sender)});
    return 0;
}
