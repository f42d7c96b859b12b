// SPDX-License-Identifier: MIT
#include "PTKeyCombo.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString keyCodeKey = u"keyCode"_s;
const QString modifiersKey = u"modifiers"_s;

} // namespace

PTKeyCombo::PTKeyCombo(qint32 keyCode, qint32 modifiers)
    : mKeyCode(keyCode)
    , mModifiers(modifiers)
{
}

PTKeyCombo PTKeyCombo::clearKeyCombo()
{
    return {};
}

PTKeyCombo PTKeyCombo::keyComboWithKeyCode_modifiers(qint32 keyCode, qint32 modifiers)
{
    return {keyCode, modifiers};
}

PTKeyCombo PTKeyCombo::initWithPlistRepresentation(const PropertyList::DictionaryPointer& plist)
{
    if (!plist || plist->isEmpty()) {
        return {};
    }
    const qint32 keyCode = std::max(plist->value(keyCodeKey).intValue(), -1);
    const qint32 modifiers = plist->value(modifiersKey).intValue();
    return {keyCode, modifiers > 0 ? modifiers : -1};
}

PropertyList::DictionaryPointer PTKeyCombo::plistRepresentation() const
{
    auto plist = PropertyList::Dictionary::create();
    plist->insert(keyCodeKey, mKeyCode);
    plist->insert(modifiersKey, mModifiers);
    return plist;
}

bool PTKeyCombo::isValidHotKeyCombo() const
{
    return mKeyCode >= 0 && mModifiers > 0;
}

bool PTKeyCombo::isClearCombo() const
{
    return mKeyCode == -1 && mModifiers == -1;
}
