// SPDX-License-Identifier: MIT
#include "DistributedNotificationCenter.h"

#include "MessageBus.h"
#include "NotificationExchange.h"
#include "NotificationMessage.h"

DistributedNotificationCenter::DistributedNotificationCenter()
    : m_exchange(std::make_shared<NotificationExchange>(&MessageBus::session()))
{
    MessageBus& bus = MessageBus::session();
    bus.run([exchange = m_exchange](sd_bus* connection) { exchange->attach(connection); });
    bus.whenLost([exchange = m_exchange] { exchange->deliverAll(); });
}

DistributedNotificationCenter::~DistributedNotificationCenter() = default;

DistributedNotificationCenter& DistributedNotificationCenter::defaultCenter()
{
    static DistributedNotificationCenter center;
    return center;
}

void DistributedNotificationCenter::postNotification(
    const QString& name, const QString& object, const PropertyList::DictionaryPointer& userInfo)
{
    const DistributedNotification notification{name, object, NotificationMessage::sendableUserInfo(userInfo)};
    MessageBus::session().run(
        [exchange = m_exchange, notification](sd_bus* connection) { exchange->post(connection, notification); });
}

void DistributedNotificationCenter::addObserver(
    QObject* context, const QString& name, const QString& object, Handler handler)
{
    QObject::connect(
        m_exchange.get(), &NotificationExchange::posted, context,
        [name, object, handler = std::move(handler)](const DistributedNotification& notification) {
            if ((name.isEmpty() || name == notification.name) && (object.isEmpty() || object == notification.object)) {
                handler(notification);
            }
        },
        Qt::QueuedConnection);
}
