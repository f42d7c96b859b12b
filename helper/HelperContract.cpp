// SPDX-License-Identifier: MIT
#include "HelperContract.h"

#include <core/Changes.h>
#include <core/Settings.h>
#include <platform/bus/DistributedNotificationCenter.h>
#include <platform/bus/MessageBus.h>
#include <platform/bus/ServiceRegistry.h>

#include <cstdlib>
#include <utility>

using namespace std::chrono_literals;

namespace {

/// Long enough for the notifications of one action to arrive, short enough not to be noticed.
constexpr auto burstLength = 50ms;

} // namespace

HelperContract::HelperContract()
{
    m_burst.setSingleShot(true);
    m_burst.setInterval(burstLength);
    connect(&m_burst, &QTimer::timeout, this, &HelperContract::takeChange);
}

HelperContract::~HelperContract() = default;

void HelperContract::begin()
{
    DistributedNotificationCenter::defaultCenter().addObserver(
        this, {}, helperIdentifier, [this](const DistributedNotification& notification) { take(notification); });
    ServiceRegistry::registerService(helperIdentifier, this, [this](bool isRegistered) {
        if (!isRegistered) {
            Q_EMIT refused();
            return;
        }
        Settings::menuBuild.store(build);
        // Whatever ends the process: also the toolkit, which does so when the display goes. By then there may be no
        // document any more that others could be told of.
        std::atexit([] {
            DistributedNotificationCenter::defaultCenter().postNotification(NotificationName::byeBye, helperIdentifier);
        });
        MessageBus::session().followService(helperIdentifier.toUtf8(), this, [this](const QString& owner) {
            if (owner.isEmpty()) {
                Q_EMIT lost();
            }
        });
        Q_EMIT begun();
    });
}

void HelperContract::tellTypingIsUnseen()
{
    Changes::tell(NotificationName::accessibilityIsOff);
}

void HelperContract::take(const DistributedNotification& notification)
{
    const QString& name = notification.name;
    if (name == NotificationName::preferencesChanged || name == NotificationName::refreshMenu) {
        if (!m_burst.isActive()) {
            m_burst.start();
        }
    } else if (name == NotificationName::turnExpansionOff) {
        holdTyping(notification.sender);
    } else if (name == NotificationName::turnExpansionOn) {
        releaseTyping();
    } else if (name == NotificationName::playEvent) {
        takeEvent(notification);
    } else if (name == NotificationName::playSuitcase && notification.userInfo) {
        Q_EMIT suitcaseRequested(notification.userInfo->value(u"filepath").string());
    }
}

void HelperContract::takeChange()
{
    m_isChanging = true;
    Q_EMIT changed();
}

void HelperContract::concludeChange()
{
    m_isChanging = false;
    if (m_eventAfterChange && !m_burst.isActive()) {
        Q_EMIT eventRequested(*std::exchange(m_eventAfterChange, std::nullopt));
    }
}

void HelperContract::takeEvent(const DistributedNotification& notification)
{
    bool isNumber = false;
    const int code = notification.userInfo ? notification.userInfo->value(u"Event").textValue().toInt(&isNumber) : 0;
    if (!isNumber) {
        return;
    }
    if (m_burst.isActive() || m_isChanging) {
        m_eventAfterChange = code;
    } else {
        Q_EMIT eventRequested(code);
    }
}

void HelperContract::holdTyping(const QString& holder)
{
    m_holder = std::make_unique<QObject>();
    MessageBus::session().followService(holder.toUtf8(), m_holder.get(), [this](const QString& owner) {
        if (owner.isEmpty()) {
            releaseTyping();
        }
    });
    Q_EMIT typingHeld(true);
}

void HelperContract::releaseTyping()
{
    if (m_holder) {
        // It may be what has called.
        m_holder.release()->deleteLater();
        Q_EMIT typingHeld(false);
    }
}
