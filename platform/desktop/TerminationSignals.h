// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSocketNotifier>

/// The signals by which others ask the process to end: SIGTERM, SIGINT and SIGHUP, as a signal of the event loop. One
/// object at a time; with it the process gets its own reaction to them back.
class TerminationSignals final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(TerminationSignals)

public:
    TerminationSignals();
    ~TerminationSignals() override;

Q_SIGNALS:
    void received();

private:
    QSocketNotifier m_notifier;
};
