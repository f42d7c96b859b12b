// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>

/// A window manager on the test's X server, as long as the object lives.
class WindowManager final
{
public:
    /// Returns when it serves: a window that is mapped while it begins may get lost.
    WindowManager()
    {
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(QStringLiteral("openbox"), QStringList());
        const QString serves = QStringLiteral("until xdotool set_num_desktops 3 && [ $(xdotool get_num_desktops) = 3 ];"
                                              "do :; done 2>/dev/null");
        QProcess::execute(
            QStringLiteral("timeout"), {QStringLiteral("20"), QStringLiteral("sh"), QStringLiteral("-c"), serves});
    }

    Q_DISABLE_COPY_MOVE(WindowManager)

    ~WindowManager()
    {
        m_process.terminate();
        m_process.waitForFinished();
    }

    qint64 processId() const { return m_process.processId(); }

private:
    QProcess m_process;
};
