// SPDX-License-Identifier: MIT
#include "PTHotKey.h"

using namespace Qt::StringLiterals;

PTHotKey::PTHotKey(const std::optional<QString>& identifier, const std::optional<PTKeyCombo>& keyCombo)
{
    setIdentifier(identifier);
    setKeyCombo(keyCombo);
}

void PTHotKey::setKeyCombo(const std::optional<PTKeyCombo>& keyCombo)
{
    mKeyCombo = keyCombo.value_or(PTKeyCombo::clearKeyCombo());
}

void PTHotKey::invoke()
{
    if (mTarget && mAction) {
        mAction(this);
    }
}

QString PTHotKey::description() const
{
    return u"<PTHotKey: %1, %2>"_s.arg(mIdentifier.value_or(u"(null)"_s), mKeyCombo.description());
}
