// SPDX-License-Identifier: MIT
#pragma once

#include "EventSource.h"

#include <platform/bus/MessageBus.h>
#include <platform/printing/PrintSubscription.h>

#include <QSet>

/// Printing: a job begins to be printed, and is done.
///
/// Listens to the print server's notifier on the system bus (public source: CUPS, org.cups.cupsd.Notifier), and asks
/// the server for it.
class PrintSource final : public EventSource
{
    Q_OBJECT

public:
    explicit PrintSource(QObject* parent);

    void start() override;

private:
    void takeJob(const MessageBus::Signal& signal);

    PrintSubscription m_subscription;
    /// The numbers of the jobs that are being printed.
    QSet<qint64> m_printing;
};
