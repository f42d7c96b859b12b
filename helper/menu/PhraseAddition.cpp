// SPDX-License-Identifier: MIT
#include "PhraseAddition.h"

#include <core/BYGlobals.h>
#include <core/NewPhrase.h>
#include <core/PhraseList.h>
#include <platform/desktop/Text.h>

#include <algorithm>

using PropertyList::ArrayPointer;

QString PhraseAddition::problemWith(const QString& phrase)
{
    if (phrase.isEmpty()) {
        return Text::tr("A phrase needs at least one character.");
    }
    const auto isTyped = [](QChar character) { return character.category() != QChar::Other_Control; };
    if (!std::ranges::all_of(phrase, isTyped)) {
        return Text::tr("A phrase is one line of text.");
    }
    return PhraseList::rowOfPhrase(BYGlobals::clippingsArray(), phrase) >= 0
               ? Text::tr("There is such a phrase already.")
               : QString();
}

Result<void> PhraseAddition::add(const QString& phrase, const QString& text)
{
    SoundsDocument& document = SoundsDocument::shared();
    if (!document.isUpToDate()) {
        document.load();
    }
    const ArrayPointer phrases = document.phrases();
    if (!phrases) {
        return Failure{Text::tr("The sounds document cannot be read.")};
    }
    if (const QString problem = problemWith(phrase); !problem.isEmpty()) {
        return Failure{problem};
    }
    const Phrase entry = newPhrase(phrase);
    entry.setPlainText(text);
    phrases->append(entry.dictionary());
    document.sort();
    if (!document.save()) {
        phrases->removeAt(PhraseList::rowOfEntry(phrases, entry.dictionary()));
        return Failure{Text::tr("The sounds document cannot be written.")};
    }
    Changes::tell(
        NotificationName::newRowAddedViaMenu, PropertyList::Dictionary::create({{PhraseKey::phrase, phrase}}));
    return {};
}
