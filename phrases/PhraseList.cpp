#include "PhraseList.h"

#include <FoldedCharacter.h>
#include <PhraseOrder.h>
#include <SharedNames.h>
#include <TableColumn.h>

#include <algorithm>
#include <utility>

using PropertyList::ArrayPointer;
using PropertyList::DictionaryPointer;
using PropertyList::Value;

namespace {

constexpr double typeAheadSeconds = 1.0;

template <typename Predicate>
int firstRow(const ArrayPointer& phrases, Predicate&& matches)
{
    if (!phrases) {
        return -1;
    }
    const auto found = std::find_if(phrases->begin(), phrases->end(), std::forward<Predicate>(matches));
    return found == phrases->end() ? -1 : int(found - phrases->begin());
}

/// The phrase of an entry in place: a null view where it has none.
QStringView phraseOf(const Value& value)
{
    const PropertyList::Dictionary* entry = value.dictionaryInPlace();
    const Value* phrase = entry ? entry->find(PhraseKey::phrase) : nullptr;
    return phrase ? phrase->stringView() : QStringView();
}

} // namespace

DictionaryPointer PhraseList::entryAt(const ArrayPointer& phrases, int row)
{
    if (!phrases || row < 0 || row >= phrases->size()) {
        return {};
    }
    return phrases->at(row).dictionary();
}

int PhraseList::rowOfPhrase(const ArrayPointer& phrases, QStringView phrase)
{
    return firstRow(phrases, [phrase](const Value& value) {
        const QStringView text = phraseOf(value);
        return !text.isNull() && text == phrase;
    });
}

int PhraseList::rowOfPhraseStartingWith(const ArrayPointer& phrases, QStringView start)
{
    // Almost every phrase differs in the first character already, which costs far less than a comparison of texts.
    const FoldedCharacter first(start.isEmpty() ? QChar() : start.front());
    return firstRow(phrases, [start, first](const Value& value) {
        const QStringView text = phraseOf(value);
        if (text.isNull() || text.size() < start.size()) {
            return false;
        }
        return start.isEmpty() || (first.matches(text.front()) && text.startsWith(start, Qt::CaseInsensitive));
    });
}

int PhraseList::rowOfEntry(const ArrayPointer& phrases, const DictionaryPointer& entry)
{
    return entry ? firstRow(phrases, [&entry](const Value& value) { return value.dictionary() == entry; }) : -1;
}

void PhraseList::sort(const ArrayPointer& phrases, const SortDescriptor& descriptor)
{
    if (!phrases) {
        return;
    }
    const auto sortAscending = [&] {
        PhraseOrder::sort(*phrases, descriptor.key, PhraseOrder::Comparison::CaseInsensitiveText);
    };
    if (descriptor.ascending) {
        sortAscending();
        return;
    }
    // Reversed twice, so that equal texts keep their order.
    std::reverse(phrases->begin(), phrases->end());
    sortAscending();
    std::reverse(phrases->begin(), phrases->end());
}

void TypeAhead::beginRunIfOver(double now)
{
    if (now - lastTime > typeAheadSeconds) {
        lastTime = now;
        abbFrag.clear();
    }
}
