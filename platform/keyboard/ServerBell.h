// SPDX-License-Identifier: MIT
#pragma once

#include "XcbHandles.h"

#include <QObject>

#include <memory>

/// Hears the bell of the X server, which programs ring to alert the user, whether it makes a sound or not. On a
/// connection of its own.
class ServerBell final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ServerBell)

public:
    /// Null where there is no X server, or one without the keyboard extension.
    static std::unique_ptr<ServerBell> ofSession();

    ~ServerBell() override = default;

Q_SIGNALS:
    void rung();

private:
    ServerBell(Xcb::Connection connection, quint8 firstEvent);
    void readEvents();

    Xcb::Connection m_connection;
    quint8 m_firstEvent;
};
