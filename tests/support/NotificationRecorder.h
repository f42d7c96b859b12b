#pragma once

#include <QObject>
#include <QStringList>

#include <DistributedNotificationCenter.h>

#include <vector>

/// Hears every distributed notification with the helper's object.
class NotificationRecorder final : public QObject
{
public:
    NotificationRecorder()
    {
        DistributedNotificationCenter::defaultCenter().addObserver(this, {}, QStringLiteral("com.blipsy.BlipsyMenu"),
            [this](const DistributedNotification& notification) { m_heard.push_back(notification); });
    }

    QStringList names() const
    {
        QStringList names;
        for (const DistributedNotification& notification : m_heard) {
            names.append(notification.name);
        }
        return names;
    }

    /// The last notification of this name; an empty one when none was heard.
    DistributedNotification last(const QString& name) const
    {
        for (auto it = m_heard.rbegin(); it != m_heard.rend(); ++it) {
            if (it->name == name) {
                return *it;
            }
        }
        return {};
    }

    void clear() { m_heard.clear(); }

private:
    std::vector<DistributedNotification> m_heard;
};
