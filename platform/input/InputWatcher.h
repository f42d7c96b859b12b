// SPDX-License-Identifier: MIT
#pragma once

#include "InputEvents.h"

#include <QObject>

#include <memory>
#include <optional>

/// Tells what the user types and clicks, whatever program has the focus. It takes nothing away from that program, waits
/// for nothing between two events, and keeps no key: what is typed exists only as the argument of a signal, so these
/// must be connected directly.
///
/// Programs that compose by an input method show their user something else than the keys pressed; of that nothing is
/// known here.
class InputWatcher : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(InputWatcher)

public:
    using QObject::QObject;

    /// Why there is nothing to be watched.
    enum class Obstacle {
        None,
        /// Neither an X server, nor a compositor, nor a keyboard whose events the user may read.
        NoDisplay,
        /// A Wayland session (or an X server without the extensions for it) whose user may not read the keyboards.
        NoReadableDevice,
    };

    /// The way that this session offers: the X server; in a Wayland session, and without an X server, the input devices
    /// that the user may read. Null, with a line in the log, where there is none; why goes to @p obstacle.
    static std::unique_ptr<InputWatcher> ofSession(Obstacle* obstacle = nullptr);

    /// Whether the session is the one in front, as it is at first. Input devices belong to the session in front: behind
    /// another one they are let go of.
    virtual void setInFront(bool /*isInFront*/) {}

    /// Overwrites what its buffers still hold of what was typed.
    virtual void forget() = 0;

    /// The next press of the key with this X11 keycode is one that this program sends, and is not told. One that has
    /// not come within a second is not waited for. Input devices hear nothing of what programs send.
    virtual void passOver(quint8 /*keycode*/) {}

Q_SIGNALS:
    void keyPressed(const KeyPress& press);
    void buttonPressed(const ButtonPress& press);
    void wheelTurned(const WheelTurn& turn);
    /// The pointer is moved while its first button is held; told once each time.
    void pointerDragged();
    void capsLockChanged(bool isOn);
    /// Keys may have been missed: what is typed now does not follow on what was typed before.
    void interrupted();
    /// Nothing more will come: the X server is gone.
    void ended();

protected:
    /// Tells when it is another than the last time; the first one is none.
    void followCapsLock(bool isOn);

private:
    std::optional<bool> m_isCapsLocked;
};
