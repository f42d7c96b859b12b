// SPDX-License-Identifier: MIT
#include "PhraseExport.h"

#include <core/Phrase.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

QString plainTextOf(const Phrase& phrase)
{
    return phrase->value(PhraseKey::plainText).textValue();
}

/// Fields are quoted where they hold what would end them.
QString quoted(QString field)
{
    const bool needsQuotes =
        std::ranges::any_of(field, [](QChar character) { return u"\",\r\n"_s.contains(character); });
    return needsQuotes ? u'"' + field.replace(u'"', u"\"\""_s) + u'"' : field;
}

QByteArray csvLine(const QStringList& fields)
{
    QStringList line;
    std::ranges::transform(fields, std::back_inserter(line), quoted);
    return line.join(u',').toUtf8() + "\r\n";
}

QByteArray csvLineOf(const Phrase& phrase)
{
    return csvLine({phrase.phrase(), phrase.soundFilepath(), phrase.app(), plainTextOf(phrase)});
}

QByteArray textOf(const Phrase& phrase)
{
    QString text = phrase.phrase() + u'\n';
    const QString plain = plainTextOf(phrase);
    if (!plain.isEmpty()) {
        for (const QStringView line : QStringView(plain).split(u'\n')) {
            text += u'\t' + line + u'\n';
        }
    }
    return text.toUtf8();
}

QJsonObject objectOf(const Phrase& phrase)
{
    return {{u"phrase"_s, phrase.phrase()}, {u"sound"_s, phrase.soundFilepath()}, {u"application"_s, phrase.app()},
        {u"text"_s, plainTextOf(phrase)}, {u"isFormatted"_s, phrase.rtfd().has_value()}};
}

} // namespace

QByteArray PhraseExport::of(const PropertyList::ArrayPointer& phrases, Form form)
{
    QByteArray bytes = form == Form::Csv ? csvLine({u"Phrase"_s, u"Sound"_s, u"Application"_s, u"Text"_s}) : "";
    QJsonArray objects;
    for (int row = 0; phrases && row < phrases->size(); ++row) {
        const Phrase phrase = DocumentEntry::at(phrases, row);
        if (!phrase) {
            continue;
        }
        switch (form) {
        case Form::Csv:
            bytes += csvLineOf(phrase);
            break;
        case Form::Text:
            bytes += textOf(phrase);
            break;
        case Form::Json:
            objects.append(objectOf(phrase));
            break;
        }
    }
    return form == Form::Json ? QJsonDocument(objects).toJson() : bytes;
}
