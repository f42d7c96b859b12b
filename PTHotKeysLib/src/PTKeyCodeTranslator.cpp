// SPDX-License-Identifier: MIT
#include "PTKeyCodeTranslator.h"

#include <utility>

using namespace Qt::StringLiterals;

PTKeyCodeTranslator::Pointer PTKeyCodeTranslator::currentTranslator()
{
    static Pointer current;
    const KeyboardLayout::Pointer layout = KeyboardLayout::current();
    if (!layout) {
        return {};
    }
    if (!current || current->keyboardLayout() != layout) {
        current = initWithKeyboardLayout(layout);
    }
    return current;
}

PTKeyCodeTranslator::Pointer PTKeyCodeTranslator::initWithKeyboardLayout(const KeyboardLayout::Pointer& layout)
{
    return layout ? std::make_shared<PTKeyCodeTranslator>(layout) : nullptr;
}

PTKeyCodeTranslator::PTKeyCodeTranslator(KeyboardLayout::Pointer layout)
    : m_keyboardLayout(std::move(layout))
    , keyLayoutKind(m_keyboardLayout->kind())
{
}

QString PTKeyCodeTranslator::translateKeyCode(qint16 keyCode)
{
    if (isClassic()) {
        // This desktop has no classic key maps to translate through.
        return {};
    }
    return m_keyboardLayout->translate(keyCode, deadKeyState).left(1);
}

QString PTKeyCodeTranslator::description() const
{
    return u"PTKeyCodeTranslator layout=%1 (%2)"_s.arg(
        m_keyboardLayout->localizedName(), isClassic() ? u"KCHR"_s : u"uchr"_s);
}
