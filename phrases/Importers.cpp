// SPDX-License-Identifier: MIT
#include "Importers.h"

#include <core/SharedNames.h>

#include <QFileInfo>

using namespace Qt::StringLiterals;

using Importers::Conversion;
using Importers::Converters;
using Importers::Source;
using PropertyList::ArrayPointer;
using PropertyList::Dictionary;
using PropertyList::DictionaryPointer;
using PropertyList::Value;

namespace {

/// Tells the expansion to swallow the character that set it off.
const QLatin1StringView suppressSeparatorMarker("%-");

/// The keys under which a tool keeps its list and, per item, phrase and text.
struct Keys
{
    QLatin1StringView list;
    QLatin1StringView phrase;
    QLatin1StringView text;
};

Keys keysOf(Source source)
{
    switch (source) {
    case Source::Typinator:
        return {"Abbreviations"_L1, "Phrase"_L1, "Expansion"_L1};
    case Source::TextExpander:
        return {"Snippets"_L1, "Phrase"_L1, "Plain Text"_L1};
    case Source::SpellCatcher:
        break;
    }
    return {"entries"_L1, "abbr"_L1, "exp"_L1};
}

QString phraseOf(const Dictionary& item, const Keys& keys, qsizetype number)
{
    const QString phrase = item.value(QString(keys.phrase)).textValue();
    return phrase.isNull() ? u"(%1)"_s.arg(number) : phrase;
}

/// Old-style property lists have no booleans: there a text stands for yes that begins as "YES", "true" or a number do.
bool isTrue(const Value& value)
{
    const QStringView text = value.stringView();
    return value.integerValue() != 0 || text.startsWith(u'y', Qt::CaseInsensitive) ||
           text.startsWith(u't', Qt::CaseInsensitive);
}

/// A text that is present but empty, where @p value is no text: an entry's keys always hold something.
QString textOrEmpty(const Value& value)
{
    const QString text = value.textValue();
    return text.isNull() ? u""_s : text;
}

/// Reads what is stored under @p key, if anything is; what cannot be read is counted under @p trouble.
std::optional<QByteArray> formattingUnder(const QString& key, const Dictionary& item,
    const Importers::FormattingReader& reader, const QString& trouble, Conversion& conversion)
{
    const Value* stored = item.find(key);
    if (!stored) {
        return std::nullopt;
    }
    const bool isData = stored->type() == PropertyList::Type::Data;
    Importers::Formatting formatting = isData ? reader(stored->data()) : Importers::Formatting();
    for (const QString& found : std::as_const(formatting.troubles)) {
        ++conversion.troubles[found];
    }
    if (!formatting.rtfd) {
        ++conversion.troubles[trouble];
    }
    return std::move(formatting.rtfd);
}

std::optional<QByteArray> formattingOf(
    const Dictionary& item, Source source, const Converters& converters, Conversion& conversion)
{
    const QString unreadableText = u"formatted text cannot be read, imported as plain text"_s;
    const QString unreadablePicture = u"picture cannot be read, imported as plain text"_s;
    switch (source) {
    case Source::Typinator:
        if (item.contains(u"Formatted")) {
            return formattingUnder(u"Formatted"_s, item, converters.rtfd, unreadableText, conversion);
        }
        return formattingUnder(u"Picture"_s, item, converters.image, unreadablePicture, conversion);
    case Source::TextExpander:
        return formattingUnder(u"Formatted Text"_s, item, converters.attributedString, unreadableText, conversion);
    case Source::SpellCatcher:
        break;
    }
    return std::nullopt;
}

DictionaryPointer makeEntry(const QString& phrase, const QString& sortOrder)
{
    const DictionaryPointer entry = Dictionary::create();
    entry->insert(PhraseKey::phrase, phrase);
    entry->insert(PhraseKey::option, u""_s);
    entry->insert(PhraseKey::sortOrder, sortOrder);
    entry->insert(PhraseKey::service, u""_s);
    return entry;
}

DictionaryPointer makeDocument(const ArrayPointer& phrases)
{
    const DictionaryPointer document = Dictionary::create();
    document->insert(DocumentKey::clippings, phrases);
    return document;
}

DictionaryPointer convertItem(
    const Dictionary& item, qsizetype number, Source source, const Converters& converters, Conversion& conversion)
{
    const Keys keys = keysOf(source);
    const DictionaryPointer entry = makeEntry(phraseOf(item, keys, number), QString::number(number));
    QString text = textOrEmpty(item.value(QString(keys.text)));
    if (source == Source::SpellCatcher && isTrue(item.value(u"supressSep"))) {
        text += suppressSeparatorMarker;
    }
    entry->insert(PhraseKey::plainText, text);
    if (std::optional<QByteArray> rtfd = formattingOf(item, source, converters, conversion)) {
        entry->insert(PhraseKey::rtfd, *std::move(rtfd));
    }
    return entry;
}

} // namespace

std::optional<Source> Importers::sourceOf(const QString& path)
{
    const QFileInfo file(path);
    if (file.fileName() == u"com.macility.typinator2.plist") {
        return Source::Typinator;
    }
    const QString extension = file.suffix();
    if (extension == u"textexpander" || extension == u"textpander") {
        return Source::TextExpander;
    }
    if (extension == u"xml") {
        return Source::SpellCatcher;
    }
    return std::nullopt;
}

QString Importers::cancelledText(Source source)
{
    switch (source) {
    case Source::Typinator:
        return u"user cancelled Typinator Save as"_s;
    case Source::TextExpander:
        return u"user cancelled Text(ex)pander Save as"_s;
    case Source::SpellCatcher:
        break;
    }
    return u"user cancelled spellcatcher Save as"_s;
}

Conversion Importers::convert(const Value& root, Source source, const Converters& converters, const Progress& progress)
{
    Conversion conversion;
    const DictionaryPointer dictionary = root.dictionary();
    const ArrayPointer items = dictionary ? dictionary->value(QString(keysOf(source).list)).array() : ArrayPointer();
    if (!items) {
        conversion.outcome = Conversion::Outcome::NoList;
        return conversion;
    }
    const ArrayPointer phrases = PropertyList::Array::create();
    phrases->reserve(items->size());
    for (qsizetype number = 0; number < items->size(); ++number) {
        if (!progress(number, items->size())) {
            conversion.outcome = Conversion::Outcome::Cancelled;
            return conversion;
        }
        if (const DictionaryPointer item = items->at(number).dictionary()) {
            phrases->append(convertItem(*item, number, source, converters, conversion));
        } else {
            ++conversion.troubles[u"item is no dictionary, left out"_s];
        }
    }
    conversion.document = makeDocument(phrases);
    return conversion;
}

DictionaryPointer Importers::newSoundsDocument()
{
    const DictionaryPointer entry = makeEntry(u"newPhrase"_s, u"1"_s);
    entry->insert(PhraseKey::soundFilepath,
        u"/Library/Application Support/GarageBand/Instrument Library/Sampler/Sampler Files/Comedy Noises/"_s);
    const ArrayPointer phrases = PropertyList::Array::create();
    phrases->append(entry);
    return makeDocument(phrases);
}
