// SPDX-License-Identifier: MIT
#pragma once

#include "EventSource.h"

#include <platform/bus/MessageBus.h>

#include <QSet>

/// Printing: a job begins to be printed, and is done.
///
/// Listens to the print server's notifier on the system bus (public source: CUPS, org.cups.cupsd.Notifier), which sends
/// as long as a program of the session has asked it to; the desktops' own print status does.
class PrintSource final : public EventSource
{
    Q_OBJECT

public:
    using EventSource::EventSource;

    void start() override;

private:
    void takeJob(const MessageBus::Signal& signal);

    /// The numbers of the jobs that are being printed.
    QSet<qint64> m_printing;
};
