// SPDX-License-Identifier: MIT
#include "EventEntries.h"

#include <core/BYGlobals.h>
#include <core/FoldedCharacter.h>

#include <algorithm>

using PropertyList::ArrayPointer;
using PropertyList::Value;

namespace {

/// Looks for one text in many, without regard to letter case. Its first and its last character are looked for before
/// anything is compared, which is what a long list spends its time on.
class TextSearch final
{
public:
    explicit TextSearch(QStringView text)
        : m_text(text)
        , m_first(text.isEmpty() ? QChar() : text.front())
        , m_last(text.isEmpty() ? QChar() : text.back())
        , m_endsInPair(!text.isEmpty() && (text.front().isSurrogate() || text.back().isSurrogate()))
    {
    }

    bool occursIn(QStringView text) const
    {
        // Inside a pair case is a matter of both halves.
        if (m_endsInPair) {
            return text.contains(m_text, Qt::CaseInsensitive);
        }
        const qsizetype toLast = m_text.size() - 1;
        for (qsizetype at = 0; at + toLast < text.size(); ++at) {
            if (m_first.matches(text[at]) && m_last.matches(text[at + toLast]) &&
                text.sliced(at).startsWith(m_text, Qt::CaseInsensitive)) {
                return true;
            }
        }
        return false;
    }

private:
    QStringView m_text;
    FoldedCharacter m_first;
    FoldedCharacter m_last;
    bool m_endsInPair;
};

/// Whether the text occurs in the entry's name, its sound's path or its category.
bool matches(const Value& entry, const TextSearch& search)
{
    const PropertyList::Dictionary* dictionary = entry.dictionaryInPlace();
    if (dictionary == nullptr) {
        return false;
    }
    for (const QString* key : {&EventKey::eventName, &EventKey::soundFilepath, &EventKey::eventCatName}) {
        const Value* value = dictionary->find(*key);
        if (value != nullptr && search.occursIn(value->stringView())) {
            return true;
        }
    }
    return false;
}

} // namespace

void EventEntries::filter(const ArrayPointer& all, const ArrayPointer& filtered, QStringView text)
{
    if (!all || !filtered) {
        return;
    }
    filtered->clear();
    const TextSearch search(text);
    for (const Value& entry : std::as_const(*all)) {
        if (text.isEmpty() ? entry.dictionaryInPlace() != nullptr : matches(entry, search)) {
            filtered->append(entry);
        }
    }
}

SoundEvent EventEntries::shownAt(int row)
{
    return DocumentEntry::at(BYGlobals::soundsPrefsArrayFiltered(), row);
}

SoundEvent EventEntries::firstWithEventOf(const ArrayPointer& all, const SoundEvent& event)
{
    if (!all || !event || !event.hasCode()) {
        return {};
    }
    const QString code = event->value(EventKey::event).textValue();
    for (const Value& entry : std::as_const(*all)) {
        const SoundEvent candidate = entry.dictionary();
        if (candidate && candidate.hasCode() && candidate->value(EventKey::event).textValue() == code) {
            return candidate;
        }
    }
    return {};
}

SoundEvent EventEntries::present(const ArrayPointer& all, const SoundEvent& event)
{
    const auto isEvent = [&event](const Value& value) { return value.dictionaryInPlace() == event.operator->(); };
    return all && std::any_of(all->begin(), all->end(), isEvent) ? event : firstWithEventOf(all, event);
}
