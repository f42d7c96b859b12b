// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QStringList>

/// Programs that work on the test's X server as its user does.
namespace Programs {

/// Runs one to its end. A server that is slow fails the test; it does not stall it.
inline bool run(const QString& program, const QStringList& arguments)
{
    constexpr int patience = 20'000;
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(program, arguments);
    return process.waitForFinished(patience) && process.exitCode() == 0;
}

/// Strikes keys together: "super+alt+p".
inline bool press(const QString& keys)
{
    return run(QStringLiteral("xdotool"), {QStringLiteral("key"), keys});
}

/// One layout or several ("us,de"), of which the first is in use.
inline bool setLayout(const QString& layouts)
{
    return run(QStringLiteral("setxkbmap"), {layouts});
}

} // namespace Programs
