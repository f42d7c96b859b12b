// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bus/DistributedNotificationCenter.h>

#include <QObject>
#include <QStringList>
#include <QTest>

#include <algorithm>
#include <vector>

/// Hears every distributed notification with an object: the helper's, another one, or any where it is null.
class NotificationRecorder final : public QObject
{
public:
    explicit NotificationRecorder(const QString& object = QStringLiteral("com.blipsy.BlipsyMenu"))
        : m_object(object)
    {
        DistributedNotificationCenter::defaultCenter().addObserver(
            this, {}, object, [this](const DistributedNotification& notification) { m_heard.push_back(notification); });
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
        const auto found = std::find_if(m_heard.rbegin(), m_heard.rend(),
            [&name](const DistributedNotification& notification) { return notification.name == name; });
        return found == m_heard.rend() ? DistributedNotification() : *found;
    }

    void clear() { m_heard.clear(); }

    /// Forgets everything that was posted until now, what is still on its way included. False when the bus is slower
    /// than any test should wait for.
    [[nodiscard]] bool forgetAllPosted()
    {
        const QString marker = QStringLiteral("end of what was posted");
        DistributedNotificationCenter::defaultCenter().postNotification(marker, m_object);
        const bool heard = QTest::qWaitFor([&] { return names().contains(marker); });
        clear();
        return heard;
    }

private:
    QString m_object;
    std::vector<DistributedNotification> m_heard;
};
