// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <bitset>
#include <memory>

class BusProperties;

/// Tells whether the user's session is the one in front of the machine, and whether it is locked, so that what is typed
/// is meant for the locker alone: by the login manager (public source: org.freedesktop.login1), and by the screen
/// saver, which is what locks (org.freedesktop.ScreenSaver, org.gnome.ScreenSaver). Where there is none of them it
/// counts as in front and open, and nothing is told.
class SessionFront final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SessionFront)

public:
    SessionFront();
    ~SessionFront() override;

    /// Begins; what holds is told once it is known, and at every change.
    void follow();

Q_SIGNALS:
    void changed(bool isInFront);
    void locked(bool isLocked);

private:
    /// Who can have locked it.
    enum class Locker { LoginManager, ScreenSaver, DesktopsScreenSaver };

    void followSession(const QByteArray& path);
    void followScreenSaver(const char* interface, Locker locker);
    void setLocked(Locker locker, bool isLocked);

    std::unique_ptr<BusProperties> m_session;
    /// A bit for each locker.
    std::bitset<3> m_lockers;
};
