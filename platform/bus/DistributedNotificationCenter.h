// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

class NotificationExchange;

/// A notification that travels between the processes of one session.
struct DistributedNotification
{
    QString name;
    QString object;
    /// User information: a dictionary of texts, numbers, booleans and data, or a null pointer. All observers share it,
    /// so it is not to be changed.
    PropertyList::DictionaryPointer userInfo;
    /// The unique name on the bus of another process that has posted it; empty for one of this process.
    QString sender = {};
};

/// Posts and observes distributed notifications: signals on the session bus, with the product's object path, its
/// interface `DistributedNotifications`, the member `Posted` and the arguments (s name, s object, a{sv} userInfo).
///
/// A sender hears its own posts too, asynchronously and once, through the bus. Without a session bus, or where the bus
/// does not bring a post back within half a second, it is delivered inside this process, also asynchronously. Nothing
/// here waits for the bus: it is served by a thread of its own, and handlers run on the thread of their context object.
/// Delivery keeps the order of posting. Signals with other arguments are ignored.
class DistributedNotificationCenter final
{
public:
    using Handler = std::function<void(const DistributedNotification&)>;

    static DistributedNotificationCenter& defaultCenter();

    Q_DISABLE_COPY_MOVE(DistributedNotificationCenter)

    /// Posts a notification. Entries of @p userInfo of other types than those above are left out; the dictionary may be
    /// changed afterwards.
    void postNotification(
        const QString& name, const QString& object, const PropertyList::DictionaryPointer& userInfo = {});

    /// Calls @p handler for every notification with this @p name and @p object until @p context is destroyed. An empty
    /// @p name or @p object matches all.
    void addObserver(QObject* context, const QString& name, const QString& object, Handler handler);

private:
    DistributedNotificationCenter();
    ~DistributedNotificationCenter();

    /// Shared with the bus thread, which may still use it while this process ends.
    std::shared_ptr<NotificationExchange> m_exchange;
};
