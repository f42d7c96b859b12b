// SPDX-License-Identifier: MIT
#include "DocumentFixture.h"

#include <core/BYGlobals.h>
#include <core/Phrase.h>
#include <core/PhraseList.h>
#include <core/SharedNames.h>

#include <Files.h>

using namespace Qt::StringLiterals;

using PropertyList::Array;
using PropertyList::ArrayPointer;
using PropertyList::Dictionary;
using PropertyList::DictionaryPointer;
using PropertyList::Value;

DictionaryPointer phraseEntry(const QString& phrase, const QString& sound, const QString& app)
{
    const DictionaryPointer entry = Dictionary::create();
    const auto insert = [&entry](const QString& key, const QString& text) {
        if (!text.isNull()) {
            entry->insert(key, text);
        }
    };
    insert(PhraseKey::phrase, phrase);
    insert(PhraseKey::soundFilepath, sound);
    insert(PhraseKey::app, app);
    return entry;
}

QStringList phrasesIn(const ArrayPointer& phrases)
{
    QStringList texts;
    for (const Value& value : phrases ? *phrases : *Array::create()) {
        const DictionaryPointer entry = value.dictionary();
        texts.append(entry ? entry->value(PhraseKey::phrase).string() : QString());
    }
    return texts;
}

DocumentFixture::DocumentFixture(const QList<Value>& phrases)
{
    writePhrases(phrases);
    BYGlobals::storeSetting(path(u"test.blipsy"_s), Settings::defaultFilePath.key);
}

DictionaryPointer DocumentFixture::entry(int row) const
{
    return DocumentEntry::at(BYGlobals::clippingsArray(), row);
}

DictionaryPointer DocumentFixture::entryCalled(const QString& phrase) const
{
    return entry(PhraseList::rowOfPhrase(BYGlobals::clippingsArray(), phrase));
}

ArrayPointer DocumentFixture::storedPhrases() const
{
    Changes::finish();
    const DictionaryPointer root = PropertyList::read(Files::contents(BYGlobals::defaultFilePath()))->dictionary();
    return root ? root->value(DocumentKey::clippings).array() : ArrayPointer();
}

void DocumentFixture::write(const QString& fileName, const Value& root) const
{
    Files::write(path(fileName), PropertyList::write(root));
}

void DocumentFixture::writePhrases(const QList<Value>& phrases, const QString& fileName) const
{
    const ArrayPointer list = Array::create();
    for (const Value& phrase : phrases) {
        list->append(phrase);
    }
    write(fileName, Dictionary::create({{DocumentKey::clippings, list}, {DocumentKey::setVolume, u"0.5"_s}}));
}
