// SPDX-License-Identifier: MIT
#include "PhraseList.h"

#include "FoldedCharacter.h"
#include "SharedNames.h"

#include <algorithm>
#include <array>
#include <memory>

using PropertyList::ArrayPointer;
using PropertyList::DictionaryPointer;
using PropertyList::Value;

namespace {

/// Looks at the phrases of many entries. Documents are read with one text for all equal keys, so that its address
/// mostly tells the key without a comparison.
class PhraseReader final
{
public:
    /// The phrase of an entry in place: a null view where it has none.
    QStringView phraseOf(const Value& value)
    {
        const PropertyList::Dictionary* dictionary = value.dictionaryInPlace();
        if (!dictionary) {
            return {};
        }
        for (const auto& [name, text] : *dictionary) {
            const QStringView key(name);
            if ((key.data() == m_key.data() && key.size() == m_key.size()) || key == PhraseKey::phrase) {
                m_key = key;
                return text.stringView();
            }
        }
        return {};
    }

private:
    QStringView m_key = PhraseKey::phrase;
};

/// Tells the processor that @p size bytes are going to be read soon. They need not be readable.
void prefetch(const void* memory, size_t size = 1)
{
    constexpr size_t cacheLine = 64;
    for (size_t offset = 0; offset < size; offset += cacheLine) {
        __builtin_prefetch(static_cast<const char*>(memory) + offset);
    }
}

/// The first row whose phrase @p matches. What the loop gains: docs/decisions/prefetching-scan.md.
///
/// An entry is three places in memory, and each costs more time to come from there than to look at. So what a row needs
/// is asked for some rows earlier: first its dictionary, then the dictionary's entries, then the text.
template <typename Predicate>
int firstRowOfPhrase(const ArrayPointer& phrases, Predicate&& matches)
{
    constexpr qsizetype ahead = 8;
    // In order of their keys at most two come before the phrase.
    constexpr size_t entriesSize = 3 * sizeof(PropertyList::Dictionary::Entry);
    const qsizetype count = phrases ? phrases->size() : 0;
    std::array<QStringView, ahead> texts;
    PhraseReader reader;
    for (qsizetype next = 0; next < count + ahead; ++next) {
        QStringView& text = texts[size_t(next % ahead)];
        if (next >= ahead && matches(text)) {
            return int(next - ahead);
        }
        if (next < count) {
            text = reader.phraseOf(phrases->at(next));
            prefetch(text.data());
        }
        if (next + ahead < count) {
            if (const PropertyList::Dictionary* entry = phrases->at(next + ahead).dictionaryInPlace()) {
                prefetch(std::to_address(entry->begin()), entriesSize);
            }
        }
        if (next + 2 * ahead < count) {
            prefetch(phrases->at(next + 2 * ahead).dictionaryInPlace());
        }
    }
    return -1;
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
