// SPDX-License-Identifier: MIT
#pragma once

#include <QList>

#include <optional>

/// Virtual key codes: the numbers by which stored hot keys name the keys of a keyboard by position, whatever the
/// layout. They are those of the classic desktop keyboards (public constants kVK_*), 0x00 to 0x7F. The session counts
/// keys differently, as XKB keycodes (also X11's): the kernel's evdev code plus 8.
namespace VirtualKeyCodes {

inline constexpr int returnKey = 0x24;
inline constexpr int tab = 0x30;
inline constexpr int space = 0x31;
/// The key that deletes backwards.
inline constexpr int deleteKey = 0x33;
inline constexpr int escape = 0x35;
inline constexpr int keypadEnter = 0x4C;
inline constexpr int help = 0x72;
inline constexpr int home = 0x73;
inline constexpr int pageUp = 0x74;
inline constexpr int forwardDelete = 0x75;
inline constexpr int end = 0x77;
inline constexpr int pageDown = 0x79;
inline constexpr int leftArrow = 0x7B;
inline constexpr int rightArrow = 0x7C;
inline constexpr int downArrow = 0x7D;
inline constexpr int upArrow = 0x7E;

/// One past the greatest virtual key code.
inline constexpr int count = 0x80;

/// The XKB keycode of a key; nothing for a code that no key has. X11 itself knows keycodes up to 255 only.
std::optional<quint32> xkbKeycode(int virtualKeyCode);

/// The XKB keycodes of all keys whose code is @p virtualKeyCode: xkbKeycode() first, then those of the keys that play
/// its part (see fromXkbKeycode()). Empty for a code that no key has.
QList<quint32> xkbKeycodes(int virtualKeyCode);

/// The virtual key code of the key with this XKB keycode; nothing for keys without one, such as media keys. Where
/// several keys of a PC keyboard play the part of one (Print and F13, Insert and Help), all of them give its code.
std::optional<int> fromXkbKeycode(quint32 keycode);

/// The code of the function key F@p number, 1 to 20; nothing for another number.
std::optional<int> functionKey(int number);

/// Whether the key is a function key in the wide sense, whose presses carry the function-key flag: F1 to F20, the
/// arrows, and the keys of the block above them (Help, Home, Page Up, forward Delete, End, Page Down).
bool isFunctionKey(int virtualKeyCode);

/// Whether the key is one that only modifies others: Command, Shift, Caps Lock, Option, Control (left and right),
/// Function.
bool isModifierKey(int virtualKeyCode);

} // namespace VirtualKeyCodes
