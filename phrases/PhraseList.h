#pragma once

#include <QString>
#include <QStringView>

#include <PropertyList.h>

struct SortDescriptor;

/// The phrase list as values: look-ups and orders that need no table. Rows are indexes into the list; -1 stands for
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

/// Sorts in place by the text under the descriptor's key, in either case; stable.
void sort(const PropertyList::ArrayPointer& phrases, const SortDescriptor& descriptor);

} // namespace PhraseList

/// The keys typed into the phrase table to find a phrase. A run lasts one second from its first key, not from its last.
struct TypeAhead
{
    QString abbFrag;
    /// When abbFrag was last emptied, in seconds of a clock that only goes forward.
    double lastTime = 0;

    /// Empties the buffer when the run that began at lastTime is over at @p now.
    void beginRunIfOver(double now);
};
