// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <optional>

/// The events by which a system tells a program that one of its hot keys was pressed or released.

/// What names a hot key in an event.
struct HotKeyIdentifier
{
    /// The four-character code of who registered it; 'Wq4H' is this library.
    quint32 signature = 0;
    /// The reference under which the hot key is registered; never 0.
    quint32 id = 0;
};

/// An event of the keyboard-event path.
struct CarbonEvent
{
    static constexpr quint32 keyboardClass = 0x6B657962; // 'keyb'
    static constexpr quint32 hotKeyPressed = 5;
    static constexpr quint32 hotKeyReleased = 6;

    quint32 eventClass = keyboardClass;
    quint32 kind = 0;
    /// The parameter '----'; missing in an event that is about no hot key.
    std::optional<HotKeyIdentifier> directObject;
};

/// An event of the application-level path.
struct ApplicationEvent
{
    static constexpr int systemDefinedType = 14;
    static constexpr int hotKeyPressedSubtype = 6;
    static constexpr int hotKeyReleasedSubtype = 9;

    int type = 0;
    int subtype = 0;
    /// The reference under which the hot key is registered, or 0.
    quintptr data1 = 0;
};
