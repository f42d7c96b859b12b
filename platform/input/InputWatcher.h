// SPDX-License-Identifier: MIT
#pragma once

#include "InputEvents.h"

#include <QObject>

#include <memory>

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

    /// The way that this session offers: the X server; in a Wayland session, and without an X server, the input devices
    /// that the user may read. Null, with a line in the log, where there is none.
    static std::unique_ptr<InputWatcher> ofSession();

    /// The next press of the key with this X11 keycode is one that this program sends, and is not told. One that has
    /// not come within a second is not waited for. Input devices hear nothing of what programs send.
    virtual void passOver(quint8 /*keycode*/) {}

Q_SIGNALS:
    void keyPressed(const KeyPress& press);
    void buttonPressed(const ButtonPress& press);
    void wheelTurned(const WheelTurn& turn);
    /// Keys may have been missed: what is typed now does not follow on what was typed before.
    void interrupted();
    /// Nothing more will come: the X server is gone.
    void ended();
};
