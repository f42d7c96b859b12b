// SPDX-License-Identifier: MIT
#pragma once

#include <platform/servers/ServerReturn.h>

#include <QByteArray>
#include <QLocalSocket>
#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

/// Has the print server of this machine (CUPS) tell the system bus about all jobs, as long as the object lives and at
/// most half an hour longer. Why not through the server's library: docs/decisions/print-server.md.
///
/// Nothing is waited for. A server that is absent is asked when its socket appears, at $CUPS_SERVER where that is a
/// path, else where Debian has it; one that refuses has a line in the log. The server keeps what it has granted when it
/// is started anew.
class PrintSubscription final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PrintSubscription)

public:
    explicit PrintSubscription(QObject* parent);
    ~PrintSubscription() override;

    void start();

    /// Asks the server, whatever it has granted before: after the machine has slept, the lease may have run out.
    void ask();

private:
    void send();
    void takeAnswer();

    QString m_path;
    /// The login name.
    QByteArray m_user;
    QLocalSocket m_server;
    ServerReturn m_return;
    QSocketNotifier m_returned;
    QTimer m_renewal;
    /// 0 for none that the server has granted.
    qint32 m_subscription = 0;
};
