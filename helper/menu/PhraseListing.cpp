// SPDX-License-Identifier: MIT
#include "PhraseListing.h"

#include <core/Phrase.h>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

QString soundName(const Phrase& phrase)
{
    const QString path = phrase.soundFilepath();
    return path.sliced(path.lastIndexOf(u'/') + 1);
}

} // namespace

PhraseListing::PhraseListing(const PropertyList::ArrayPointer& phrases, int show, int order)
    : m_show(Show(show))
{
    if (!phrases || show < int(Show::Sounds) || show > int(Show::PhrasesAndSounds)) {
        return;
    }
    m_entries.reserve(size_t(phrases->size()));
    for (const PropertyList::Value& value : std::as_const(*phrases)) {
        const Phrase phrase = value.dictionary();
        if (phrase && (m_show != Show::Sounds || !phrase.soundFilepath().isEmpty())) {
            m_entries.push_back(phrase.dictionary());
        }
    }
    const auto size = qsizetype(m_entries.size());
    const bool isSorted = order == (m_show == Show::Sounds ? 1 : 0);
    if (isSorted && size > PhraseGroups::mostItems) {
        m_initials = PhraseGroups::byInitial({0, size}, [this](qsizetype place) { return beginningAt(place); });
    }
}

QString PhraseListing::beginningAt(qsizetype place) const
{
    const Phrase phrase = m_entries[size_t(place)];
    return m_show == Show::Sounds ? soundName(phrase) : phrase.phrase();
}

QString PhraseListing::titleAt(qsizetype place) const
{
    const Phrase phrase = m_entries[size_t(place)];
    const bool hasBoth = m_show == Show::PhrasesAndSounds && !phrase.soundFilepath().isEmpty();
    return hasBoth ? phrase.phrase() + u" – "_s + soundName(phrase) : beginningAt(place);
}
