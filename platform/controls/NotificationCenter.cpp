// SPDX-License-Identifier: MIT
#include "NotificationCenter.h"

#include <utility>

NotificationCenter& NotificationCenter::defaultCenter()
{
    static NotificationCenter center;
    return center;
}

void NotificationCenter::addObserver(QObject* observer, const QString& name, const QObject* object, Handler handler)
{
    std::erase_if(m_observations, [](const auto& observation) { return observation->isOver(); });
    m_observations.push_back(
        std::make_shared<Observation>(Observation{observer, name, object, object == nullptr, std::move(handler)}));
}

void NotificationCenter::removeObserver(const QObject* observer)
{
    std::erase_if(m_observations, [observer](const auto& observation) {
        if (observation->observer != observer) {
            return false;
        }
        observation->observer.clear();
        return true;
    });
}

void NotificationCenter::postNotification(const QString& name, QObject* object, const QVariantMap& userInfo)
{
    const Notification notification{name, object, userInfo};
    // A handler may add and remove observers, or run a dialog meanwhile: what is walked is a copy.
    const auto observations = m_observations;
    for (const auto& observation : observations) {
        if (observation->isOver() || observation->name != name) {
            continue;
        }
        if (observation->ofAnyObject || observation->object == object) {
            observation->handler(notification);
        }
    }
}
