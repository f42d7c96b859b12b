// SPDX-License-Identifier: MIT
#pragma once

#include "EventSource.h"

#include <platform/bus/BusProperties.h>

/// The session: log in and out, locked and unlocked, another user's turn.
///
/// Listens to the login manager (public source: org.freedesktop.login1) and, for logging out, to the session manager
/// through the toolkit.
class SessionSource final : public EventSource
{
    Q_OBJECT

public:
    explicit SessionSource(QObject* parent);

    void start() override;

private:
    void follow(const QByteArray& session);
    void takeProperty(const QString& name, bool now);
    void setLocked(bool isLocked);
    void endSession();

    BusProperties* m_session = nullptr;
    bool m_isLocked = false;
    bool m_isEnding = false;
};
