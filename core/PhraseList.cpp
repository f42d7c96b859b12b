// SPDX-License-Identifier: MIT
#include "PhraseList.h"

#include "EntryScan.h"
#include "FoldedCharacter.h"
#include "SharedNames.h"

#include <algorithm>

using PropertyList::ArrayPointer;
using PropertyList::DictionaryPointer;
using PropertyList::Value;

namespace {

/// The first row whose phrase @p matches; it is given a null view where there is none.
template <typename Predicate>
int firstRowOfPhrase(const ArrayPointer& phrases, Predicate&& matches)
{
    if (!phrases) {
        return -1;
    }
    return EntryScan::firstRow(
        *phrases, PhraseKey::phrase, [&matches](const EntryScan::Row& row) { return matches(row.text); });
}

} // namespace

int PhraseList::rowOfPhrase(const ArrayPointer& phrases, QStringView phrase)
{
    if (phrase.isNull()) {
        return -1;
    }
    return firstRowOfPhrase(phrases, [phrase](QStringView text) { return !text.isNull() && text == phrase; });
}

int PhraseList::rowOfPhraseStartingWith(const ArrayPointer& phrases, QStringView start)
{
    // Almost every phrase differs in the first character already, which costs far less than a comparison of texts.
    const FoldedCharacter first(start.isEmpty() ? QChar() : start.front());
    return firstRowOfPhrase(phrases, [start, first](QStringView text) {
        if (text.isNull() || text.size() < start.size()) {
            return false;
        }
        return start.isEmpty() || (first.matches(text.front()) && text.startsWith(start, Qt::CaseInsensitive));
    });
}

int PhraseList::rowOfEntry(const ArrayPointer& phrases, const DictionaryPointer& entry)
{
    if (!phrases || !entry) {
        return -1;
    }
    const auto found =
        std::ranges::find(*phrases, entry.constData(), [](const Value& value) { return value.dictionaryInPlace(); });
    return found == phrases->end() ? -1 : int(found - phrases->begin());
}

int PhraseList::rowOfCounterpart(
    const ArrayPointer& phrases, const ArrayPointer& before, const DictionaryPointer& entry)
{
    const int row = rowOfEntry(phrases, entry);
    const int rowBefore = rowOfEntry(before, entry);
    if (row >= 0 || rowBefore < 0 || !phrases) {
        return row;
    }
    const auto rowOfSameNumber = [&phrases, &before, rowBefore](const auto& matches) {
        auto number = std::count_if(before->begin(), before->begin() + rowBefore, matches);
        const auto found = std::find_if(phrases->begin(), phrases->end(),
            [&matches, &number](const Value& value) { return matches(value) && number-- == 0; });
        return found == phrases->end() ? -1 : int(found - phrases->begin());
    };
    const Value phrase = entry->value(PhraseKey::phrase);
    const auto hasPhrase = [&phrase](const Value& value) {
        const PropertyList::Dictionary* candidate = value.dictionaryInPlace();
        return candidate && candidate->value(PhraseKey::phrase) == phrase;
    };
    const Value whole = entry;
    const int equalRow = rowOfSameNumber([&](const Value& value) { return hasPhrase(value) && value == whole; });
    return equalRow >= 0 ? equalRow : rowOfSameNumber(hasPhrase);
}
