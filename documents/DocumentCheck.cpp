// SPDX-License-Identifier: MIT
#include "DocumentCheck.h"

#include "FormattedText.h"

#include <core/SharedNames.h>
#include <core/SoundFiles.h>

#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

using PropertyList::Array;
using PropertyList::Dictionary;
using PropertyList::Type;
using PropertyList::Value;

namespace {

constexpr int eventCount = 80;

QString nameOf(Type type)
{
    switch (type) {
    case Type::String:
        return u"text"_s;
    case Type::Data:
        return u"data"_s;
    case Type::Array:
        return u"an array"_s;
    case Type::Dictionary:
        return u"a dictionary"_s;
    default:
        return u"of another type"_s;
    }
}

} // namespace

std::vector<DocumentFinding> DocumentCheck::findingsIn(const PropertyList::DictionaryPointer& root)
{
    DocumentCheck check;
    check.checkRoot(*root);
    const bool hasClippings = root->contains(DocumentKey::clippings);
    check.checkList(*root, hasClippings ? DocumentKey::clippings : DocumentKey::snippets, PhraseKey::phrase,
        &DocumentCheck::checkPhrase);
    check.checkList(*root, DocumentKey::sounds, EventKey::eventName, &DocumentCheck::checkEvent);
    return std::move(check.m_findings);
}

void DocumentCheck::checkRoot(const Dictionary& root)
{
    static const Keys known{{DocumentKey::clippings, Type::Array}, {DocumentKey::snippets, Type::Array},
        {DocumentKey::sounds, Type::Array}, {DocumentKey::setVolume, Type::String}};
    checkKeys(root, known);
    checkVolume(root, DocumentKey::setVolume);
    if (!root.contains(DocumentKey::clippings) && !root.contains(DocumentKey::snippets)) {
        add(DocumentKey::clippings, u"is missing: the document has no phrases"_s);
    } else if (root.contains(DocumentKey::clippings) && root.contains(DocumentKey::snippets)) {
        add(DocumentKey::snippets, u"is not read, since there are \"Clippings\""_s);
    }
}

void DocumentCheck::checkList(const Dictionary& root, const QString& list, const QString& nameKey,
    void (DocumentCheck::*checkEntry)(const Dictionary& entry))
{
    m_seen.clear();
    m_place = {.list = list};
    const Value* const stored = root.find(list);
    const Array* const entries = stored != nullptr ? stored->arrayInPlace() : nullptr;
    for (qsizetype row = 0; entries != nullptr && row < entries->size(); ++row) {
        const Dictionary* const entry = entries->at(row).dictionaryInPlace();
        m_place.entry = row + 1;
        m_place.name = entry != nullptr ? entry->value(nameKey).textValue() : QString();
        if (entry != nullptr) {
            (this->*checkEntry)(*entry);
        } else {
            add({}, u"is no dictionary"_s);
        }
    }
    m_place = {};
}

void DocumentCheck::checkPhrase(const Dictionary& entry)
{
    static const Keys known{{PhraseKey::phrase, Type::String, true}, {PhraseKey::soundFilepath, Type::String},
        {PhraseKey::app, Type::String}, {PhraseKey::plainText, Type::String}, {PhraseKey::rtfd, Type::Data},
        {PhraseKey::sortOrder, Type::String}, {PhraseKey::option, Type::String}, {PhraseKey::service, Type::String}};
    checkKeys(entry, known);
    checkIsFirst(PhraseKey::phrase, m_place.name);
    checkSound(entry);
    if (const QString app = entry.value(PhraseKey::app).string(); !app.isEmpty() && !QFileInfo::exists(app)) {
        add(PhraseKey::app, u"names %1, which is not there"_s.arg(app));
    }
    if (const Value rtfd = entry.value(PhraseKey::rtfd);
        rtfd.type() == Type::Data && !FormattedText::isWholeRtfd(rtfd.data())) {
        add(PhraseKey::rtfd, u"looks damaged"_s);
    }
}

void DocumentCheck::checkEvent(const Dictionary& entry)
{
    static const Keys known{{EventKey::event, Type::String, true}, {EventKey::eventName, Type::String, true},
        {EventKey::eventCatName, Type::String}, {EventKey::soundFilepath, Type::String},
        {EventKey::volume, Type::String},
        // A number or text.
        {EventKey::stopOtherSounds, Type::Null}};
    checkKeys(entry, known);
    if (const QString code = entry.value(EventKey::event).textValue(); !code.isEmpty()) {
        bool isNumber = false;
        const int number = code.toInt(&isNumber);
        if (!isNumber || number < 0 || number >= eventCount) {
            add(EventKey::event, u"is \"%1\", which is no event's code"_s.arg(code));
        }
        checkIsFirst(EventKey::event, code);
    }
    checkSound(entry);
    checkVolume(entry, EventKey::volume);
}

void DocumentCheck::checkKeys(const Dictionary& dictionary, const Keys& known)
{
    for (const Dictionary::Entry& entry : dictionary) {
        const auto key = std::ranges::find(known, QStringView(entry.key), &Key::name);
        if (key == known.end()) {
            add(entry.key, u"is unknown"_s);
        } else if (key->type != Type::Null && entry.value.type() != key->type) {
            add(entry.key, u"is not %1"_s.arg(nameOf(key->type)));
        }
    }
    for (const Key& key : known) {
        if (key.isNeeded && dictionary.value(key.name).textValue().isEmpty()) {
            add(key.name.toString(), u"is missing or empty"_s);
        }
    }
}

void DocumentCheck::checkSound(const Dictionary& entry)
{
    const QString path = entry.value(PhraseKey::soundFilepath).string();
    if (path.isEmpty()) {
        return;
    }
    if (!m_sounds.contains(path)) {
        m_sounds.insert(path, SoundFiles::problemWith(path));
    }
    if (const std::optional<QString> problem = m_sounds.value(path)) {
        add(PhraseKey::soundFilepath, u"cannot be played: %1: %2"_s.arg(path, *problem));
    }
}

void DocumentCheck::checkVolume(const Dictionary& dictionary, const QString& key)
{
    const QString text = dictionary.value(key).string();
    bool isNumber = false;
    const double volume = text.toDouble(&isNumber);
    // Text alone: what is of another type has been told already.
    if (!text.isEmpty() && (!isNumber || !(volume >= 0 && volume <= 1))) {
        add(key, u"is \"%1\", which is no number from 0 to 1"_s.arg(text));
    }
}

void DocumentCheck::checkIsFirst(const QString& key, const QString& text)
{
    if (text.isEmpty()) {
        return;
    }
    const auto first = m_seen.constFind(text);
    if (first == m_seen.constEnd()) {
        m_seen.insert(text, m_place.entry);
    } else {
        add(key, u"is that of entry %1, which alone counts"_s.arg(*first));
    }
}

void DocumentCheck::add(const QString& key, const QString& problem)
{
    DocumentFinding& finding = m_findings.emplace_back(m_place);
    finding.key = key;
    finding.problem = problem;
}
