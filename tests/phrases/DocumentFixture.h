// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

#include <QTemporaryDir>

/// A phrase entry; null texts leave their keys out.
PropertyList::DictionaryPointer phraseEntry(const QString& phrase, const QString& sound, const QString& app = {});

/// The texts of the phrases in a list, in its order; a null text for what is no entry.
QStringList phrasesIn(const PropertyList::ArrayPointer& phrases);

/// A sounds document in a folder of its own, the one that the settings name.
class DocumentFixture
{
public:
    explicit DocumentFixture(const QList<PropertyList::Value>& phrases);

    PropertyList::DictionaryPointer entry(int row) const;
    PropertyList::DictionaryPointer entryCalled(const QString& phrase) const;
    /// The phrase list as it is on disk now.
    PropertyList::ArrayPointer storedPhrases() const;

    QString path(const QString& fileName) const { return m_folder.filePath(fileName); }

    void write(const QString& fileName, const PropertyList::Value& root) const;
    void writePhrases(
        const QList<PropertyList::Value>& phrases, const QString& fileName = QStringLiteral("test.blipsy")) const;

    QTemporaryDir m_folder;
};
