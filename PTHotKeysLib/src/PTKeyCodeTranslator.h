// SPDX-License-Identifier: MIT
#pragma once

#include <platform/keyboard/KeyboardLayout.h>

#include <QString>

#include <memory>

/// Translates virtual key codes to characters through one keyboard layout. Main thread only.
class PTKeyCodeTranslator final
{
public:
    using Pointer = std::shared_ptr<PTKeyCodeTranslator>;

    /// The translator for the keyboard layout that the session uses now; the same object until the layout changes. Null
    /// when the session has no layout.
    static Pointer currentTranslator();

    /// A translator for @p layout; null when that is null.
    static Pointer initWithKeyboardLayout(const KeyboardLayout::Pointer& layout);

    /// @p layout must not be null.
    explicit PTKeyCodeTranslator(KeyboardLayout::Pointer layout);

    /// The one character (UTF-16 unit) that the key shows with no modifier; empty for a key without one.
    ///
    /// Dead keys work across calls, and nothing but a key resets them, which is meant: a dead key gives nothing and
    /// changes what the next key gives ("^" and then "a" give "" and "â").
    QString translateKeyCode(qint16 keyCode);

    /// Whether a dead key decides on what the next key gives.
    bool isDeadKeyPending() const { return deadKeyState != 0; }

    const KeyboardLayout::Pointer& keyboardLayout() const { return m_keyboardLayout; }

    /// For the log: "PTKeyCodeTranslator layout=German (uchr)".
    QString description() const;

private:
    bool isClassic() const { return keyLayoutKind == KeyboardLayout::Kind::Classic; }

    KeyboardLayout::Pointer m_keyboardLayout;
    /// The layout's kind when the translator was made.
    KeyboardLayout::Kind keyLayoutKind;
    quint32 deadKeyState = 0;
};
