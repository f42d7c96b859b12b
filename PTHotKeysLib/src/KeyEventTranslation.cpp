// SPDX-License-Identifier: MIT
#include "KeyEventTranslation.h"

#include <platform/keyboard/KeyboardLayout.h>
#include <platform/keyboard/VirtualKeyCodes.h>

#include <QKeyEvent>

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr std::array<std::pair<int, int>, 18> namedKeys{{
    {Qt::Key_Return, VirtualKeyCodes::returnKey},
    {Qt::Key_Enter, VirtualKeyCodes::keypadEnter},
    {Qt::Key_Tab, VirtualKeyCodes::tab},
    {Qt::Key_Backtab, VirtualKeyCodes::tab},
    {Qt::Key_Space, VirtualKeyCodes::space},
    {Qt::Key_Backspace, VirtualKeyCodes::deleteKey},
    {Qt::Key_Escape, VirtualKeyCodes::escape},
    {Qt::Key_Delete, VirtualKeyCodes::forwardDelete},
    {Qt::Key_Help, VirtualKeyCodes::help},
    {Qt::Key_Insert, VirtualKeyCodes::help},
    {Qt::Key_Home, VirtualKeyCodes::home},
    {Qt::Key_End, VirtualKeyCodes::end},
    {Qt::Key_PageUp, VirtualKeyCodes::pageUp},
    {Qt::Key_PageDown, VirtualKeyCodes::pageDown},
    {Qt::Key_Left, VirtualKeyCodes::leftArrow},
    {Qt::Key_Right, VirtualKeyCodes::rightArrow},
    {Qt::Key_Down, VirtualKeyCodes::downArrow},
    {Qt::Key_Up, VirtualKeyCodes::upArrow},
}};

constexpr std::array<std::pair<Qt::KeyboardModifier, quint32>, 4> modifierFlags{{
    {Qt::ShiftModifier, ApplicationModifier::shift},
    {Qt::ControlModifier, ApplicationModifier::control},
    {Qt::AltModifier, ApplicationModifier::option},
    {Qt::MetaModifier, ApplicationModifier::command},
}};

/// Layouts can put a modifier anywhere (Caps Lock as Control), so that the scan code alone does not tell.
bool isModifier(int key)
{
    constexpr std::array modifiers{Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_Meta, Qt::Key_AltGr,
        Qt::Key_CapsLock, Qt::Key_Super_L, Qt::Key_Super_R, Qt::Key_Hyper_L, Qt::Key_Hyper_R, Qt::Key_Mode_switch,
        Qt::Key_Multi_key};
    return std::find(modifiers.begin(), modifiers.end(), key) != modifiers.end();
}

std::optional<int> keyCodeByMeaning(int key)
{
    if (key >= Qt::Key_F1 && key <= Qt::Key_F35) {
        return VirtualKeyCodes::functionKey(key - Qt::Key_F1 + 1);
    }
    const auto* const named =
        std::find_if(namedKeys.begin(), namedKeys.end(), [key](const auto& entry) { return entry.first == key; });
    if (named != namedKeys.end()) {
        return named->second;
    }
    const KeyboardLayout::Pointer layout = KeyboardLayout::current();
    // Qt's keys below this are the characters themselves.
    constexpr int endOfCharacters = 0x10000;
    if (!layout || key <= 0 || key >= endOfCharacters) {
        return {};
    }
    return layout->keyWithCharacter(QChar(key));
}

} // namespace

std::optional<qint16> virtualKeyCodeOf(const QKeyEvent& event)
{
    const quint32 scanCode = event.nativeScanCode();
    const std::optional<int> keyCode =
        scanCode != 0 ? VirtualKeyCodes::fromXkbKeycode(scanCode) : keyCodeByMeaning(event.key());
    if (!keyCode || isModifier(event.key()) || VirtualKeyCodes::isModifierKey(*keyCode)) {
        return {};
    }
    return qint16(*keyCode);
}

quint32 applicationModifierFlagsOf(const QKeyEvent& event, qint16 virtualKeyCode)
{
    quint32 flags = VirtualKeyCodes::isFunctionKey(virtualKeyCode) ? ApplicationModifier::function : 0;
    for (const auto& [modifier, flag] : modifierFlags) {
        if (event.modifiers().testFlag(modifier)) {
            flags |= flag;
        }
    }
    return flags;
}
