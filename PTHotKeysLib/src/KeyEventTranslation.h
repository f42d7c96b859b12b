// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <optional>

class QKeyEvent;

/// What an application key event carries besides its text: which modifiers were down, as a mask of flags.
namespace ApplicationModifier {
inline constexpr quint32 capsLock = 0x10000;
inline constexpr quint32 shift = 0x20000;
inline constexpr quint32 control = 0x40000;
inline constexpr quint32 option = 0x80000;
inline constexpr quint32 command = 0x100000;
/// The key is a function key in the wide sense: F1 to F20, an arrow, Home and its neighbours.
inline constexpr quint32 function = 0x800000;
} // namespace ApplicationModifier

/// The virtual key code of the key of @p event: by its scan code, or, for an event without one (an on-screen keyboard
/// makes such), by its meaning in the current keyboard layout. Nothing for the keys that only modify others, and for
/// those that have no virtual key code.
std::optional<qint16> virtualKeyCodeOf(const QKeyEvent& event);

/// The modifier flags of @p event, whose key has the given virtual key code. The physical keys are kept apart: Super is
/// command, Alt is option, Control is control.
quint32 applicationModifierFlagsOf(const QKeyEvent& event, qint16 virtualKeyCode);
