// SPDX-License-Identifier: MIT
#pragma once

#include <platform/keyboard/XcbHandles.h>

#include <QObject>

#include <chrono>
#include <memory>

/// Tells when the user has neither typed nor moved the pointer for some time: an alarm of the X server (X
/// Synchronization Extension, counter IDLETIME), so that nothing here wakes up before. Main thread only.
class IdleAlarm final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(IdleAlarm)

public:
    ~IdleAlarm() override;

    /// Null where there is no X server, or none that counts the idle time.
    static std::unique_ptr<IdleAlarm> ofServer();

    /// Rings after @p time without input, once for each such time; never for 0 or less. Takes the place of what was set
    /// before.
    void set(std::chrono::milliseconds time);

Q_SIGNALS:
    void rang();

private:
    IdleAlarm(Xcb::Connection connection, quint32 counter, quint8 firstEvent);
    void readEvents();

    Xcb::Connection m_connection;
    quint32 m_counter;
    quint8 m_firstEvent;
    /// 0 while none is set.
    quint32 m_alarm = 0;
};
