// SPDX-License-Identifier: MIT
#pragma once

#include "Phrase.h"

/// A new phrase entry with @p phrase, as the pane and the helper add it: it sounds like the bundle's default phrase
/// sound, and is in no document yet.
Phrase newPhrase(const QString& phrase);
