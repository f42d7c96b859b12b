// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>

/// A window manager on the test's X server, as long as the object lives.
class WindowManager final
{
public:
    WindowManager()
    {
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(QStringLiteral("openbox"), QStringList());
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
