// SPDX-License-Identifier: MIT
#pragma once

#include "PhraseGroups.h"

#include <platform/plist/PropertyList.h>

#include <QString>

#include <vector>

/// The phrases of a document as a menu shows them. To make one is a look at every phrase, which any thread may do
/// before others have the document; from then on it does not change. The entries are shared with the document.
class PhraseListing final
{
public:
    /// What an item shows: the values of "MenuPref" from 1 to 3.
    enum class Show {
        /// The name of the sound file. Phrases without a sound are left out.
        Sounds = 1,
        Phrases,
        PhrasesAndSounds,
    };

    /// Nothing.
    PhraseListing() = default;
    /// The entries of @p phrases, in their order, which "SortPref" has as @p order. A null list, and a @p show that is
    /// none of the values of Show, list nothing.
    PhraseListing(const PropertyList::ArrayPointer& phrases, int show, int order);

    const std::vector<PropertyList::DictionaryPointer>& entries() const { return m_entries; }

    /// All of it by initial, where it is too long for one menu and sorted by what the items begin with; else empty.
    const std::vector<PhraseGroups::Range>& initials() const { return m_initials; }

    /// What an item begins with.
    QString beginningAt(qsizetype place) const;
    QString titleAt(qsizetype place) const;

private:
    Show m_show = Show::PhrasesAndSounds;
    std::vector<PropertyList::DictionaryPointer> m_entries;
    std::vector<PhraseGroups::Range> m_initials;
};
