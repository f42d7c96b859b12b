// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

#include <QString>

/// A phrase that has just been typed.
struct CompletedPhrase
{
    /// Its entry in the document, which is shared.
    PropertyList::DictionaryPointer entry;
    /// How many characters the phrase has as it was typed, each of which a BackSpace takes back.
    qsizetype characters = 0;
    /// What came after it and completed it, as text; empty where the phrase itself did.
    QString trigger;
};
