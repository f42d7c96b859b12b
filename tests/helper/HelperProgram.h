// SPDX-License-Identifier: MIT
#pragma once

#include <core/SharedNames.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QProcess>
#include <QTest>

/// The helper as a process of its own, with its log.
class HelperProgram final
{
public:
    explicit HelperProgram(const QMap<QString, QString>& changes = {})
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const auto& [name, value] : changes.asKeyValueRange()) {
            environment.insert(name, value);
        }
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QStringLiteral(BLIPSY_HELPER), QStringList());
    }

    ~HelperProgram()
    {
        process.kill();
        process.waitForFinished();
    }

    Q_DISABLE_COPY_MOVE(HelperProgram)

    static bool isRegistered()
    {
        return QDBusConnection::sessionBus().interface()->isServiceRegistered(helperIdentifier);
    }

    /// Waits until the pane would see that the helper runs, or has ended.
    static bool awaitRegistered(bool isAwaited = true)
    {
        return QTest::qWaitFor([=] { return isRegistered() == isAwaited; }, 20'000);
    }

    /// Waits for the end.
    bool hasEnded() { return process.waitForFinished(20'000) && process.exitStatus() == QProcess::NormalExit; }

    QProcess process;
};
