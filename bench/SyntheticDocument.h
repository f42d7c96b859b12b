// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

#include <QString>

/// Sounds documents of any size for the benchmarks: the same for the same arguments.
namespace SyntheticDocument {

/// The phrases in the order of their "SortOrder"; their texts are not in alphabetical order.
inline PropertyList::ArrayPointer phrases(int count)
{
    using PropertyList::Dictionary;
    using namespace Qt::StringLiterals;
    const auto list = PropertyList::Array::create();
    list->reserve(count);
    quint32 scrambled = 1;
    for (int i = 0; i < count; ++i) {
        scrambled = scrambled * 1664525U + 1013904223U;
        const QString word = QString::number(scrambled, 36);
        list->append(Dictionary::create({
            {u"Option"_s, u""_s},
            {u"Phrase"_s, u"Phrase %1"_s.arg(word)},
            {u"Plain Text"_s, u"Text of %1 & more"_s.arg(word)},
            {u"Service"_s, u""_s},
            {u"SortOrder"_s, QString::number(i)},
            {u"SoundFilepath"_s, u"/usr/share/sounds/%1.aiff"_s.arg(word)},
        }));
    }
    return list;
}

/// A whole document with @p count phrases, about 350 bytes of XML each, and a volume.
inline PropertyList::DictionaryPointer root(int count)
{
    using namespace Qt::StringLiterals;
    return PropertyList::Dictionary::create({
        {u"Clippings"_s, phrases(count)},
        {u"SetVolume"_s, u"0.5"_s},
        {u"Sounds"_s, PropertyList::Array::create()},
    });
}

} // namespace SyntheticDocument
