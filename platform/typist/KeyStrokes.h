// SPDX-License-Identifier: MIT
#pragma once

#include <platform/keyboard/KeyInterpreter.h>
#include <platform/keyboard/XkbHandles.h>

#include <QHash>
#include <QList>

#include <optional>

/// Which keys have to be struck for what, by a keyboard layout and the group and locks that count now.
class KeyStrokes final
{
public:
    struct Stroke
    {
        quint8 keycode = 0;
        bool isShifted = false;
    };

    /// @p state is the keyboard as it is now; null gives a table without keys.
    explicit KeyStrokes(Xkb::State state);

    /// The group and the locks have changed. The modifiers that are held do not matter.
    void setState(const KeyboardState& state);

    /// How to give a symbol of the keyboard library; nothing where that takes more than Shift.
    std::optional<Stroke> find(quint32 symbol) const;
    /// The first key that gives @p symbol in any group, without modifiers; for shortcuts, which programs look up so.
    std::optional<quint8> keyInAnyGroup(quint32 symbol) const;

    /// The keys that modify others while they are held, locks not among them.
    const QList<quint8>& modifierKeys() const { return m_modifierKeys; }

    /// The keycodes that mean nothing in the layout.
    const QList<quint8>& spareKeycodes() const { return m_spareKeycodes; }

private:
    void readKeys();
    void readStrokes();

    Xkb::State m_state;
    KeyboardState m_now;
    QHash<quint32, Stroke> m_strokes;
    QHash<quint32, quint8> m_keys;
    QList<quint8> m_modifierKeys;
    QList<quint8> m_spareKeycodes;
};
