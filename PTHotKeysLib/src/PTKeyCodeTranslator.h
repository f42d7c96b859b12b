#pragma once

#include <QString>

#include <KeyboardLayout.h>

#include <memory>

/// Translates virtual key codes to characters through one keyboard layout. Main thread only.
class PTKeyCodeTranslator final
{
public:
    using Pointer = std::shared_ptr<const PTKeyCodeTranslator>;

    /// The translator for the keyboard layout that the session uses now; the same object until the layout changes. Null
    /// when the session has no layout.
    static Pointer currentTranslator();

    /// A translator for @p layout; null when that is null.
    static Pointer initWithKeyboardLayout(const KeyboardLayout::Pointer& layout);

    /// @p layout must not be null.
    explicit PTKeyCodeTranslator(KeyboardLayout::Pointer layout);

    /// The one character that the key shows with no modifier; empty for a key without one. A translation for display: a
    /// dead key gives its accent and leaves nothing pending for the key after it.
    QString translateKeyCode(qint16 keyCode) const;

    const KeyboardLayout::Pointer& keyboardLayout() const { return m_keyboardLayout; }

    /// For the log: "PTKeyCodeTranslator layout=German (uchr)".
    QString description() const;

private:
    KeyboardLayout::Pointer m_keyboardLayout;
};
