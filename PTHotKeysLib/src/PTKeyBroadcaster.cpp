// SPDX-License-Identifier: MIT
#include "PTKeyBroadcaster.h"

#include "KeyEventTranslation.h"
#include "PTKeyCombo.h"

#include <QFocusEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QWindow>

#include <array>

namespace {

struct ModifierPair
{
    quint32 applicationFlag;
    quint32 classicBit;
};

constexpr std::array<ModifierPair, 5> cocoaToCarbon{{
    {ApplicationModifier::command, 0x100},
    {ApplicationModifier::option, 0x800},
    {ApplicationModifier::control, 0x1000},
    {ApplicationModifier::shift, 0x200},
    {ApplicationModifier::function, 0x8000},
}};

/// Whether the dialog acts on the key press: bare Return and keypad Enter press its default button, bare Escape cancels
/// it. By meaning and not by place, so that a layout's second Escape key counts too.
bool isDialogKey(const QKeyEvent& press)
{
    constexpr auto modifiers = Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    const int key = press.key();
    return !(press.modifiers() & modifiers) && (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape);
}

} // namespace

PTKeyBroadcaster::PTKeyBroadcaster(QWidget* parent)
    : QPushButton(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setAutoDefault(false);
}

PTKeyBroadcaster::~PTKeyBroadcaster() = default;

void PTKeyBroadcaster::keyDown(QKeyEvent* event)
{
    _bcastEvent(event);
    event->accept();
}

bool PTKeyBroadcaster::performKeyEquivalent(QKeyEvent* event)
{
    _bcastEvent(event);
    return true;
}

void PTKeyBroadcaster::_bcastEvent(QKeyEvent* event)
{
    const std::optional<qint16> keyCode = virtualKeyCodeOf(*event);
    if (!keyCode) {
        return;
    }
    const quint32 flags = applicationModifierFlagsOf(*event, *keyCode);
    _bcastKeyCode_modifiers(*keyCode, qint32(cocoaModifiersAsCarbonModifiers(flags)));
}

void PTKeyBroadcaster::_bcastKeyCode_modifiers(qint16 keyCode, qint32 modifiers)
{
    Q_EMIT PTKeyBroadcasterKeyEvent(PTKeyCombo(keyCode, modifiers));
}

quint32 PTKeyBroadcaster::cocoaModifiersAsCarbonModifiers(quint32 flags)
{
    quint32 modifiers = 0;
    for (const ModifierPair& pair : cocoaToCarbon) {
        if ((flags & pair.applicationFlag) != 0) {
            modifiers |= pair.classicBit;
        }
    }
    return modifiers;
}

/// Here and not in keyPressEvent(), which Tab never reaches.
bool PTKeyBroadcaster::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        // Accepted, the key press comes as such even when it is a shortcut of the program.
        event->accept();
        return true;
    case QEvent::KeyPress: {
        auto* const press = static_cast<QKeyEvent*>(event);
        if (isDialogKey(*press)) {
            // Not accepted, it goes on to the window.
            press->ignore();
        } else {
            keyDown(press);
        }
        return true;
    }
    case QEvent::KeyRelease:
        // A button would take the release of the space bar for a click.
        event->accept();
        return true;
    default:
        return QPushButton::event(event);
    }
}

/// The window gets the key presses that no control with the focus has taken.
bool PTKeyBroadcaster::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == window()) {
        if (event->type() == QEvent::ShortcutOverride) {
            event->accept();
            return true;
        }
        if (event->type() == QEvent::KeyPress && !isDialogKey(*static_cast<QKeyEvent*>(event))) {
            return performKeyEquivalent(static_cast<QKeyEvent*>(event));
        }
    }
    return QPushButton::eventFilter(watched, event);
}

void PTKeyBroadcaster::showEvent(QShowEvent* event)
{
    // Installing it again moves the filter, it does not double it.
    window()->installEventFilter(this);
    QPushButton::showEvent(event);
}

void PTKeyBroadcaster::focusInEvent(QFocusEvent* event)
{
    holdKeyboard(true);
    QPushButton::focusInEvent(event);
}

void PTKeyBroadcaster::focusOutEvent(QFocusEvent* event)
{
    holdKeyboard(false);
    QPushButton::focusOutEvent(event);
}

/// A grab of the whole keyboard goes before those of single combinations. Only X servers know either.
void PTKeyBroadcaster::holdKeyboard(bool isHeld) const
{
    if (QWindow* const handle = window()->windowHandle(); handle && QGuiApplication::platformName() == u"xcb") {
        handle->setKeyboardGrabEnabled(isHeld);
    }
}
