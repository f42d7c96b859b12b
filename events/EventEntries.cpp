#include "EventEntries.h"

#include <SharedNames.h>

using PropertyList::ArrayPointer;
using PropertyList::DictionaryPointer;
using PropertyList::Value;

bool EventEntries::matches(const Value& entry, QStringView text)
{
    const PropertyList::Dictionary* dictionary = entry.dictionaryInPlace();
    if (dictionary == nullptr) {
        return false;
    }
    for (const QString* key : {&EventKey::eventName, &EventKey::soundFilepath, &EventKey::eventCatName}) {
        const Value* value = dictionary->find(*key);
        if (value != nullptr && value->stringView().contains(text, Qt::CaseInsensitive)) {
            return true;
        }
    }
    return false;
}

void EventEntries::filter(const ArrayPointer& all, const ArrayPointer& filtered, QStringView text)
{
    if (!all || !filtered) {
        return;
    }
    filtered->clear();
    for (const Value& entry : std::as_const(*all)) {
        if (entry.dictionaryInPlace() != nullptr && (text.isEmpty() || matches(entry, text))) {
            filtered->append(entry);
        }
    }
}

DictionaryPointer EventEntries::entryAt(const ArrayPointer& entries, int row)
{
    if (!entries || row < 0 || row >= entries->size()) {
        return {};
    }
    return entries->at(row).dictionary();
}

DictionaryPointer EventEntries::firstWithEventOf(const ArrayPointer& all, const DictionaryPointer& entry)
{
    if (!all || !entry || !entry->contains(EventKey::event)) {
        return {};
    }
    const QString event = entry->value(EventKey::event).textValue();
    for (const Value& candidate : std::as_const(*all)) {
        const DictionaryPointer dictionary = candidate.dictionary();
        if (dictionary && dictionary->contains(EventKey::event) &&
            dictionary->value(EventKey::event).textValue() == event) {
            return dictionary;
        }
    }
    return {};
}
