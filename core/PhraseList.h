#pragma once

#include <QStringView>

#include <PropertyList.h>

/// The phrase list as values: look-ups that need no table. Rows are indexes into the list; -1 stands for
/// none. Entries that are no dictionaries, and texts that are no strings, match nothing.
namespace PhraseList {

/// The entry at @p row, or null where there is none.
PropertyList::DictionaryPointer entryAt(const PropertyList::ArrayPointer& phrases, int row);

/// The first row whose "Phrase" is exactly @p phrase.
int rowOfPhrase(const PropertyList::ArrayPointer& phrases, QStringView phrase);

/// The first row whose "Phrase" begins with @p start, in either case.
int rowOfPhraseStartingWith(const PropertyList::ArrayPointer& phrases, QStringView start);

/// The row of this very entry.
int rowOfEntry(const PropertyList::ArrayPointer& phrases, const PropertyList::DictionaryPointer& entry);

} // namespace PhraseList
