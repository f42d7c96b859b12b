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
    return layout ? std::make_shared<const PTKeyCodeTranslator>(layout) : nullptr;
}

PTKeyCodeTranslator::PTKeyCodeTranslator(KeyboardLayout::Pointer layout)
    : m_keyboardLayout(std::move(layout))
{
}

QString PTKeyCodeTranslator::translateKeyCode(qint16 keyCode) const
{
    return m_keyboardLayout->characterOnKey(keyCode);
}

QString PTKeyCodeTranslator::description() const
{
    const bool isClassic = m_keyboardLayout->kind() == KeyboardLayout::Kind::Classic;
    return u"PTKeyCodeTranslator layout=%1 (%2)"_s.arg(
        m_keyboardLayout->localizedName(), isClassic ? u"KCHR"_s : u"uchr"_s);
}
