// SPDX-License-Identifier: MIT
#include "TriggerCharacters.h"

#include "Settings.h"

CharacterBitmap TriggerCharacters::defaults()
{
    CharacterBitmap triggers;
    triggers.add(u" \t\r");
    return triggers;
}

CharacterBitmap TriggerCharacters::chosen()
{
    const std::optional<QByteArray> stored = Settings::triggersSet.value();
    return stored ? CharacterBitmap(*stored) : defaults();
}
