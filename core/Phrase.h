// SPDX-License-Identifier: MIT
#pragma once

#include "DocumentEntry.h"

#include <QByteArray>

#include <optional>

/// A phrase entry of the document by name. Texts that are absent read as empty, numbers as their text.
class Phrase final : public DocumentEntry
{
public:
    using DocumentEntry::DocumentEntry;

    /// What is typed to hear the sound.
    QString phrase() const { return value(PhraseKey::phrase).textValue(); }

    void setPhrase(const QString& text) const { setText(PhraseKey::phrase, text); }

    /// The path of a file, a suitcase or a folder.
    QString soundFilepath() const { return value(PhraseKey::soundFilepath).textValue(); }

    /// The path of the only application in which the phrase counts; empty where it counts in all.
    QString app() const { return value(PhraseKey::app).textValue(); }

    bool hasApp() const { return dictionary()->contains(PhraseKey::app); }

    void setApp(const QString& path) const { setText(PhraseKey::app, path); }

    void clearApp() const { dictionary()->remove(PhraseKey::app); }

    void setPlainText(const QString& text) const { setText(PhraseKey::plainText, text); }

    /// The formatted text as flattened RTFD; nothing where the text is plain.
    std::optional<QByteArray> rtfd() const
    {
        const PropertyList::Value stored = value(PhraseKey::rtfd);
        return stored.type() == PropertyList::Type::Data ? std::optional(stored.data()) : std::nullopt;
    }

    void setRtfd(const std::optional<QByteArray>& rtfd) const
    {
        dictionary()->insert(PhraseKey::rtfd, rtfd ? PropertyList::Value(*rtfd) : PropertyList::Value());
    }
};
