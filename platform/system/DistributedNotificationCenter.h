#pragma once

#include <PropertyList.h>

#include <QObject>
#include <QString>

#include <functional>

/// A notification that travels between the processes of one session.
struct DistributedNotification
{
    QString name;
    QString object;
    /// User information: a dictionary of scalars, or a null pointer.
    PropertyList::DictionaryPointer userInfo;
};

/// Posts and observes distributed notifications: signals on the session bus with the object path
/// `/com/blipsy/BlipsyMenu`, interface `com.blipsy.DistributedNotifications`, member `Posted` and the arguments
/// (s name, s object, a{sv} userInfo).
///
/// A sender hears its own posts too, asynchronously, through the bus. Without a session bus the posts are delivered
/// inside this process, also asynchronously, and one log line says so. Nothing here waits for the bus: it is served by a
/// thread of its own, and handlers run on the thread of their context object. Delivery keeps the order of posting.
class DistributedNotificationCenter final
{
public:
    using Handler = std::function<void(const DistributedNotification&)>;

    static DistributedNotificationCenter& defaultCenter();

    void postNotification(
        const QString& name, const QString& object, const PropertyList::DictionaryPointer& userInfo = {});

    /// Calls @p handler for every notification with this @p name and @p object until @p context is destroyed. An empty
    /// @p name or @p object matches all.
    void addObserver(QObject* context, const QString& name, const QString& object, Handler handler);
};
