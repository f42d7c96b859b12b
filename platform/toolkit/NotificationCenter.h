#pragma once

#include <PropertyList.h>

#include <QObject>
#include <QString>
#include <QVariantMap>

#include <functional>

/// A notification inside this process.
struct Notification
{
    QString name;
    /// Who posted it.
    QObject* object = nullptr;
    QVariantMap userInfo;
};

/// Delivers notifications inside the process, synchronously, in the order in which observers were added. Main thread only.
class NotificationCenter final
{
public:
    using Handler = std::function<void(const Notification&)>;

    static NotificationCenter& defaultCenter();

    /// Calls @p handler for each notification called @p name that @p object posts (any object when null) until
    /// @p observer or @p object is destroyed or the observer removed.
    void addObserver(QObject* observer, const QString& name, const QObject* object, Handler handler);
    void removeObserver(const QObject* observer);

    void postNotification(const QString& name, QObject* object, const QVariantMap& userInfo = {});
};
