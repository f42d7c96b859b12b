// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <vector>

/// A notification inside this process.
struct Notification
{
    QString name;
    /// Who posted it.
    QObject* object = nullptr;
    QVariantMap userInfo;
};

/// Delivers notifications inside the process, synchronously, in the order in which observers were added. Main thread
/// only.
class NotificationCenter final
{
public:
    using Handler = std::function<void(const Notification&)>;

    static NotificationCenter& defaultCenter();

    /// Calls @p handler for each notification called @p name that @p object posts (any object when null) until
    /// @p observer or @p object is destroyed or the observer removed.
    void addObserver(QObject* observer, const QString& name, const QObject* object, Handler handler);
    /// Ends all observations of @p observer; a delivery under way does not reach it any more.
    void removeObserver(const QObject* observer);

    void postNotification(const QString& name, QObject* object, const QVariantMap& userInfo = {});

private:
    struct Observation
    {
        QPointer<QObject> observer;
        QString name;
        QPointer<const QObject> object;
        bool ofAnyObject = false;
        Handler handler;

        bool isOver() const { return !observer || (!ofAnyObject && !object); }
    };

    NotificationCenter() = default;

    std::vector<std::shared_ptr<Observation>> m_observations;
};
