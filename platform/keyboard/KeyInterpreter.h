// SPDX-License-Identifier: MIT
#pragma once

#include "XkbHandles.h"

#include <QStringView>

#include <array>

/// What one key press types: a few UTF-16 units, held in place, so that nothing typed is left behind in freed memory.
class KeyText final
{
public:
    /// In bytes of UTF-8, and so at most as many units: longer sequences cannot be composed.
    static constexpr size_t maximum = 255;

    KeyText() = default;
    /// From UTF-8 of at most maximum bytes; what is beyond is dropped.
    explicit KeyText(QByteArrayView utf8);

    /// Valid as long as this object.
    QStringView view() const { return {m_units.data(), m_size}; }

private:
    std::array<QChar, maximum> m_units;
    qsizetype m_size = 0;
};

/// What a key press means to the program that has the focus.
struct KeyMeaning
{
    enum class Key {
        Character,
        BackSpace,
        Delete,
        Return,
        Tab,
        Escape,
        Left,
        Right,
        Up,
        Down,
        /// Changes no text by itself: a modifier, a lock, a dead key or another part of a composition, a media key.
        Silent,
        /// Whatever else: function keys, Home, Page Up and their like.
        Other,
    };

    Key key = Key::Other;
    /// Held together with Control, Alt or Super (not as a part of the layout): a command, and no text.
    bool isShortcut = false;
    /// What is typed; also that of Return ("\r"), Tab and Escape. Empty for all other keys but characters, and for
    /// shortcuts.
    KeyText text;
};

/// The parts of a keyboard's state as an X server tells them.
struct KeyboardState
{
    quint32 baseModifiers = 0;
    quint32 latchedModifiers = 0;
    quint32 lockedModifiers = 0;
    quint32 baseGroup = 0;
    quint32 latchedGroup = 0;
    quint32 lockedGroup = 0;
};

/// Says what keys mean as they are pressed one after the other: by the layout, the modifiers and locks, dead keys and
/// Compose sequences (those of the locale and of the user's own file). The modifiers are either told (setState()), or
/// followed key by key (follow()); not both.
class KeyInterpreter final
{
public:
    /// Begins with the keymap, modifiers and locks of @p state. Dead keys stay silent, and what follows them is plain,
    /// where the locale has no Compose table.
    explicit KeyInterpreter(Xkb::State state);

    void setState(const KeyboardState& state);
    /// Takes note of a key that goes down or up. Of a press only after press(), whose meaning it does not change.
    void follow(quint32 xkbKeycode, bool isDown);

    /// The meaning of the next press. A press that the keyboard repeats is one, too.
    KeyMeaning press(quint32 xkbKeycode);
    bool isCapsLocked() const;
    /// Leaves a composition that has begun.
    void abandonComposition();

private:
    bool isShortcut(quint32 xkbKeycode) const;

    Xkb::State m_state;
    /// Null without a Compose table.
    Xkb::ComposeState m_composition;
};
