#include "PTKeyCombo.h"

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

const QString keyCodeKey = u"keyCode"_s;
const QString modifiersKey = u"modifiers"_s;

qint32 intValue(const PropertyList::Value& value)
{
    using Limits = std::numeric_limits<qint32>;
    return qint32(std::clamp<qint64>(value.integerValue(), Limits::min(), Limits::max()));
}

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
    const qint32 keyCode = std::max(intValue(plist->value(keyCodeKey)), -1);
    const qint32 modifiers = intValue(plist->value(modifiersKey));
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
