// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/CharacterBitmap.h>

/// The characters that end a typed phrase.
namespace TriggerCharacters {

/// Those that count until the user chooses otherwise: space, tab and Return.
CharacterBitmap defaults();

/// Those of the setting "TriggersSet"; the defaults where it is absent.
CharacterBitmap chosen();

} // namespace TriggerCharacters
