// SPDX-License-Identifier: MIT
#pragma once

#include "MessageBus.h"

#include <QObject>

#include <memory>

/// Hears the calls of one method that programs of the session make to each other, through a connection of its own that
/// only listens (public source: D-Bus Specification, org.freedesktop.DBus.Monitoring). Where the bus refuses that, or
/// there is none, it is silent, and the log says why.
class CallMonitor final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(CallMonitor)

public:
    CallMonitor(const QByteArray& interface, const QByteArray& member, QObject* parent);
    ~CallMonitor() override;

    void start();

Q_SIGNALS:
    /// Arguments as in MessageBus::subscribe().
    void called(const MessageBus::Signal& call);

private:
    class Listener;

    /// Shared with the bus thread, to which it belongs.
    std::shared_ptr<Listener> m_listener;
};
