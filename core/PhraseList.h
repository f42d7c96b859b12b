// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

#include <QStringView>

/// The phrase list as values: look-ups that need no table. Rows are indexes into the list; -1 stands for
/// none. Entries that are no dictionaries, and texts that are no strings, match nothing.
namespace PhraseList {

/// The first row whose "Phrase" is exactly @p phrase; a null text is no phrase, unlike an empty one.
int rowOfPhrase(const PropertyList::ArrayPointer& phrases, QStringView phrase);

/// The first row whose "Phrase" begins with @p start, in either case.
int rowOfPhraseStartingWith(const PropertyList::ArrayPointer& phrases, QStringView start);

/// The row of this very entry.
int rowOfEntry(const PropertyList::ArrayPointer& phrases, const PropertyList::DictionaryPointer& entry);

/// Where @p phrases, the list loaded anew or sorted, holds what @p entry is in @p before: this very entry, else one of
/// equal contents, else one of the same phrase. Of several it is the one that stands at the same place among them.
int rowOfCounterpart(const PropertyList::ArrayPointer& phrases, const PropertyList::ArrayPointer& before,
    const PropertyList::DictionaryPointer& entry);

} // namespace PhraseList
