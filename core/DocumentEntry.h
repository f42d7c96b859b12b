// SPDX-License-Identifier: MIT
#pragma once

#include "SharedNames.h"

#include <platform/plist/PropertyList.h>

#include <utility>

/// What a phrase and a sound event have in common: a view of an entry of the document, which is shared. Copies view the
/// same entry, and what is set through one is seen through all; keys and types that nobody here knows stay as they are
/// (docs/decisions/shared-containers.md). An entry that is none is false, and nothing else may be asked of it.
class DocumentEntry
{
public:
    DocumentEntry() = default;

    DocumentEntry(PropertyList::DictionaryPointer dictionary)
        : m_dictionary(std::move(dictionary))
    {
    }

    /// The entry at @p row of @p list; none where there is no such row, no list, or something else in it.
    static PropertyList::DictionaryPointer at(const PropertyList::ArrayPointer& list, int row)
    {
        return list && row >= 0 && row < list->size() ? list->at(row).dictionary() : PropertyList::DictionaryPointer();
    }

    explicit operator bool() const { return m_dictionary.constData() != nullptr; }

    /// Whether both view the same entry, whatever is in it.
    bool operator==(const DocumentEntry&) const = default;

    const PropertyList::DictionaryPointer& dictionary() const { return m_dictionary; }

    /// The entry itself, for keys that have no name here.
    PropertyList::Dictionary* operator->() const { return m_dictionary.data(); }

    /// Only the empty text stands for no sound. A key that is absent counts as a sound: taking that away stores the
    /// empty text.
    bool hasSound() const
    {
        const PropertyList::Value path = m_dictionary->value(PhraseKey::soundFilepath);
        return path.type() != PropertyList::Type::String || !path.stringView().isEmpty();
    }

    /// Gives the entry the sound at @p path, or none for an empty path.
    void setSoundFilepath(const QString& path) const { setText(PhraseKey::soundFilepath, path); }

    /// Sets the text under @p key. A null text is stored as an empty one.
    void setText(const QString& key, const QString& text) const
    {
        m_dictionary->insert(key, text.isNull() ? QStringLiteral("") : text);
    }

protected:
    /// What the entry holds under a key; a null value where it holds nothing.
    PropertyList::Value value(QStringView key) const { return m_dictionary->value(key); }

private:
    PropertyList::DictionaryPointer m_dictionary;
};
