// SPDX-License-Identifier: MIT
#pragma once

#include <QPushButton>

class PTKeyCombo;
class QKeyEvent;

/// A control that captures the key presses of its window, shortcuts and Tab included, and announces each as a key
/// combination; a key without modifiers is announced too. The keys that only modify others are no key press. Return,
/// keypad Enter and Escape without modifiers are left to the window, which could not be closed by key otherwise; none
/// of them can be a hot key.
///
/// While it has the focus, combinations that other programs have reserved on the X server come here, too, and do
/// nothing there.
class PTKeyBroadcaster final : public QPushButton
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PTKeyBroadcaster)

public:
    explicit PTKeyBroadcaster(QWidget* parent = nullptr);
    ~PTKeyBroadcaster() override;

    /// A key press that reaches the control itself; it goes no further.
    void keyDown(QKeyEvent* event);
    /// A key press that the window offers to its controls, whichever has the focus. True: it is handled.
    bool performKeyEquivalent(QKeyEvent* event);
    void _bcastEvent(QKeyEvent* event);
    void _bcastKeyCode_modifiers(qint16 keyCode, qint32 modifiers);
    /// The classic modifier bits (as in PTKeyCombo) of a mask of application modifier flags; other flags, Caps Lock
    /// among them, are dropped.
    static quint32 cocoaModifiersAsCarbonModifiers(quint32 flags);

Q_SIGNALS:
    /// A key has been pressed.
    void PTKeyBroadcasterKeyEvent(const PTKeyCombo& keyCombo);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void holdKeyboard(bool isHeld) const;
};
