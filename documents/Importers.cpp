// SPDX-License-Identifier: MIT
#include "Importers.h"

#include <core/Phrase.h>

#include <QFileInfo>

#include <array>

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

/// What is particular about a tool: the keys under which it keeps its list and, per item, phrase and text.
struct Tool
{
    QStringView list;
    QStringView phrase;
    QStringView text;
    QStringView cancelledText;
};

const Tool& toolOf(Source source)
{
    static constexpr std::array tools{
        Tool{u"Abbreviations", u"Phrase", u"Expansion", u"user cancelled Typinator Save as"},
        Tool{u"Snippets", u"Phrase", u"Plain Text", u"user cancelled Text(ex)pander Save as"},
        Tool{u"entries", u"abbr", u"exp", u"user cancelled spellcatcher Save as"},
    };
    return tools[size_t(source)];
}

QString phraseOf(const Dictionary& item, const Tool& tool, qsizetype number)
{
    const QString phrase = item.value(tool.phrase).textValue();
    return phrase.isNull() ? u"(%1)"_s.arg(number) : phrase;
}

/// Old-style property lists have no booleans: there a text stands for yes that begins as "YES", "true" or a number do.
bool isTrue(const Value& value)
{
    const QStringView text = value.stringView();
    return value.integerValue() != 0 || text.startsWith(u'y', Qt::CaseInsensitive) ||
           text.startsWith(u't', Qt::CaseInsensitive);
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

Phrase makePhrase(const QString& phrase, const QString& sortOrder)
{
    return Dictionary::create({{PhraseKey::phrase, phrase}, {PhraseKey::option, u""_s},
        {PhraseKey::sortOrder, sortOrder}, {PhraseKey::service, u""_s}});
}

DictionaryPointer makeDocument(const ArrayPointer& phrases)
{
    return Dictionary::create({{DocumentKey::clippings, phrases}});
}

Phrase convertItem(
    const Dictionary& item, qsizetype number, Source source, const Converters& converters, Conversion& conversion)
{
    const Tool& tool = toolOf(source);
    const Phrase phrase = makePhrase(phraseOf(item, tool, number), QString::number(number));
    QString text = item.value(tool.text).textValue();
    if (source == Source::SpellCatcher && isTrue(item.value(u"supressSep"))) {
        text += suppressSeparatorMarker;
    }
    phrase.setPlainText(text);
    phrase.setRtfd(formattingOf(item, source, converters, conversion));
    return phrase;
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
    return toolOf(source).cancelledText.toString();
}

Conversion Importers::convert(const Value& root, Source source, const Converters& converters, const Progress& progress)
{
    Conversion conversion;
    const DictionaryPointer dictionary = root.dictionary();
    const ArrayPointer items = dictionary ? dictionary->value(toolOf(source).list).array() : ArrayPointer();
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
            phrases->append(convertItem(*item, number, source, converters, conversion).dictionary());
        } else {
            ++conversion.troubles[u"item is no dictionary, left out"_s];
        }
    }
    conversion.document = makeDocument(phrases);
    return conversion;
}

DictionaryPointer Importers::newSoundsDocument()
{
    const Phrase phrase = makePhrase(u"newPhrase"_s, u"1"_s);
    phrase.setSoundFilepath(
        u"/Library/Application Support/GarageBand/Instrument Library/Sampler/Sampler Files/Comedy Noises/"_s);
    return makeDocument(PropertyList::Array::create({phrase.dictionary()}));
}
