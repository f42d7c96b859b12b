// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

/// A bus daemon of the test's own in the place of the system's. To be made before the first use of the bus.
class SystemBus final
{
public:
    SystemBus()
    {
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + path().toLocal8Bit());
        start();
    }

    ~SystemBus() { stop(); }

    Q_DISABLE_COPY_MOVE(SystemBus)

    void start()
    {
        m_daemon.start(QStringLiteral("dbus-daemon"),
            {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--nopidfile"),
                QStringLiteral("--print-address"), QStringLiteral("--address=unix:path=") + path()});
        // It prints its address when it listens.
        QVERIFY(m_daemon.waitForReadyRead(20'000));
        m_daemon.readAllStandardOutput();
    }

    void stop()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
        QFile::remove(path());
    }

    qint64 processId() const { return m_daemon.processId(); }

private:
    QString path() const { return m_folder.filePath(QStringLiteral("socket")); }

    QTemporaryDir m_folder;
    QProcess m_daemon;
};
