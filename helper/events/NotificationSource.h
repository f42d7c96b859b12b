// SPDX-License-Identifier: MIT
#pragma once

#include "EventSource.h"

#include <platform/bus/CallMonitor.h>

/// What programs tell their user by notifications: mail, messages, calls, errors.
///
/// Listens to the calls of the notification service (public source: freedesktop.org Desktop Notifications
/// Specification, categories). Of a notification only its category and urgency are looked at.
class NotificationSource final : public EventSource
{
    Q_OBJECT

public:
    explicit NotificationSource(QObject* parent);

    void start() override;

private:
    void takeNotification(const MessageBus::Signal& call);

    CallMonitor m_calls;
};
