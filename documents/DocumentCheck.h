// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

#include <QHash>
#include <QString>

#include <optional>
#include <vector>

/// Something in a sounds document that is unknown, missing or cannot be played.
struct DocumentFinding
{
    /// The key of the list that the entry is in; empty where the finding is about the root.
    QString list = {};
    /// From 1; 0 where it is about no entry.
    qsizetype entry = 0;
    /// The entry's phrase, or the event's name; may be empty.
    QString name = {};
    /// The key that it is about; empty where it is about the whole entry.
    QString key = {};
    /// In words.
    QString problem = {};
};

/// Looks through a sounds document, entry by entry (docs/formats/sounds-document.md). Main thread only.
class DocumentCheck final
{
public:
    /// What was found in the document with this root, in the order of the file.
    static std::vector<DocumentFinding> findingsIn(const PropertyList::DictionaryPointer& root);

private:
    struct Key
    {
        QStringView name;
        PropertyList::Type type;
        bool isNeeded = false;
    };

    using Keys = std::vector<Key>;

    void checkRoot(const PropertyList::Dictionary& root);
    void checkList(const PropertyList::Dictionary& root, const QString& list, const QString& nameKey,
        void (DocumentCheck::*checkEntry)(const PropertyList::Dictionary& entry));
    void checkPhrase(const PropertyList::Dictionary& entry);
    void checkEvent(const PropertyList::Dictionary& entry);
    void checkKeys(const PropertyList::Dictionary& dictionary, const Keys& known);
    void checkSound(const PropertyList::Dictionary& entry);
    void checkVolume(const PropertyList::Dictionary& dictionary, const QString& key);
    void checkIsFirst(const QString& key, const QString& text);
    void add(const QString& key, const QString& problem);

    std::vector<DocumentFinding> m_findings;
    /// Where the look is now.
    DocumentFinding m_place;
    /// What is wrong with the sounds seen so far, by path: many entries may share one.
    QHash<QString, std::optional<QString>> m_sounds;
    /// The phrases or codes seen so far in this list, with the entry that had them first.
    QHash<QString, qsizetype> m_seen;
};
