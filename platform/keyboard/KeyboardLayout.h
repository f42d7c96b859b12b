// SPDX-License-Identifier: MIT
#pragma once

#include "XkbHandles.h"

#include <QString>

#include <memory>
#include <optional>

/// A keyboard layout: what character each key of the keyboard gives. Immutable; main thread only.
class KeyboardLayout final
{
    Q_DISABLE_COPY_MOVE(KeyboardLayout)

public:
    using Pointer = std::shared_ptr<const KeyboardLayout>;

    /// What kind of key map describes the layout.
    enum class Kind { Classic = 1, Unicode = 2 };

    /// The layout that the session uses now: the X server's, group switches included, where there is one; else the
    /// first of the Wayland compositor's; else the one that the XKB_DEFAULT_* environment variables or the system's
    /// default name (docs/decisions/keyboard-layout.md). The same object as the last time
    /// as long as the layout has not changed, so that a cache can be keyed by it; asking costs next to nothing then.
    /// Changes are noticed when the event loop delivers the server's word of them. Null when there is no layout to be
    /// had (logged).
    static Pointer current();

    /// Keeps references to @p keymap. @p group counts the layouts of the keymap from 0.
    KeyboardLayout(xkb_keymap* keymap, quint32 group);
    ~KeyboardLayout() = default;

    /// Every layout of this desktop has a Unicode key map.
    static constexpr Kind kind() { return Kind::Unicode; }

    /// A new state of the keyboard, with this layout and no key pressed or locked.
    Xkb::State newState() const;

    /// The name of the layout, for instance "German".
    QString localizedName() const;

    /// The one character (UTF-16 unit) that the cap of the key @p virtualKeyCode shows: what the key types without
    /// modifiers, of a keypad key the digit, of a dead key its accent standing alone. Empty for a key without one.
    QString characterOnKey(int virtualKeyCode) const;

    /// What the key types without modifiers, dead keys allowed. @p deadKeyState is 0, or tells which dead key is
    /// pending from an earlier call, and is brought up to date: a dead key gives nothing and is pending afterwards; the
    /// character after it gives both composed (one UTF-16 unit), or the accent and the character where they do not
    /// compose. A key without a character gives nothing and changes nothing.
    QString translate(int virtualKeyCode, quint32& deadKeyState) const;

    /// The virtual key code of the first key whose cap shows @p character, upper and lower case being the same; nothing
    /// when none does.
    std::optional<int> keyWithCharacter(QChar character) const;

private:
    Xkb::Keymap m_keymap;
    Xkb::State m_state;
    quint32 m_group;
};
