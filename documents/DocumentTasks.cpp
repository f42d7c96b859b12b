// SPDX-License-Identifier: MIT
#include "DocumentTasks.h"

#include "DocumentCheck.h"
#include "FormattedText.h"
#include "NewDocument.h"

#include <core/SharedNames.h>
#include <core/SoundsDocument.h>
#include <platform/storage/AtomicFile.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>

#include <algorithm>
#include <cstdio>
#include <utility>

using namespace Qt::StringLiterals;

using DocumentTasks::Status;
using Importers::Conversion;
using PropertyList::ArrayPointer;
using PropertyList::DictionaryPointer;

namespace {

Status fail(const QString& reason)
{
    QTextStream(stderr) << "blipsy-settings: " << reason << Qt::endl;
    return DocumentTasks::Failed;
}

/// Prints a result; @p status, unless it cannot be printed.
Status print(const QByteArray& bytes, Status status)
{
    QFile output;
    const bool isPrinted =
        output.open(stdout, QIODevice::WriteOnly) && output.write(bytes) == bytes.size() && output.flush();
    return isPrinted ? status : fail(u"cannot write to the standard output stream: %1"_s.arg(output.errorString()));
}

Status print(const QJsonObject& object, Status status)
{
    return print(QJsonDocument(object).toJson(), status);
}

qsizetype sizeOf(const ArrayPointer& list)
{
    return list ? list->size() : 0;
}

/// A line of its own, whatever is in the names.
QString lineOf(const DocumentFinding& finding)
{
    QStringList words;
    if (!finding.list.isEmpty()) {
        words.append(finding.list);
    }
    if (finding.entry > 0) {
        words.append(QString::number(finding.entry));
    }
    if (!finding.name.isEmpty()) {
        words.append(u"(%1)"_s.arg(finding.name));
    }
    const QString place = words.isEmpty() ? QString() : words.join(u' ') + u": "_s;
    const QString key = finding.key.isEmpty() ? QString() : u"\"%1\" "_s.arg(finding.key);
    return QString(place + key + finding.problem).simplified();
}

QJsonObject objectOf(const DocumentFinding& finding)
{
    return {{u"list"_s, finding.list}, {u"entry"_s, finding.entry}, {u"name"_s, finding.name}, {u"key"_s, finding.key},
        {u"problem"_s, finding.problem}};
}

/// The entries that are formatted text.
qsizetype formattedIn(const ArrayPointer& phrases)
{
    return std::ranges::count_if(std::as_const(*phrases), [](const PropertyList::Value& value) {
        const PropertyList::Dictionary* const entry = value.dictionaryInPlace();
        return entry != nullptr && entry->contains(PhraseKey::rtfd);
    });
}

Status sumUp(const Conversion& conversion, const QString& path, const QString& destination, bool asJson)
{
    const ArrayPointer phrases = SoundsDocument::phrasesOf(conversion.document);
    const qsizetype formatted = formattedIn(phrases);
    QJsonArray troubles;
    QString lines = u"%1: %2 phrases, %3 of them formatted, from %4\n"_s.arg(destination)
                        .arg(phrases->size())
                        .arg(formatted)
                        .arg(path);
    for (auto trouble = conversion.troubles.cbegin(); trouble != conversion.troubles.cend(); ++trouble) {
        troubles.append(QJsonObject{{u"problem"_s, trouble.key()}, {u"items"_s, trouble.value()}});
        lines += u"%1 (%2 items)\n"_s.arg(trouble.key()).arg(trouble.value());
    }
    if (!asJson) {
        return print(lines.toUtf8(), DocumentTasks::Done);
    }
    return print(QJsonObject{{u"source"_s, path}, {u"document"_s, destination}, {u"phrases"_s, phrases->size()},
                     {u"formatted"_s, formatted}, {u"troubles"_s, troubles}},
        DocumentTasks::Done);
}

} // namespace

Status DocumentTasks::check(const QString& path, bool asJson)
{
    const Result<DictionaryPointer> root = SoundsDocument::readRoot(path);
    if (!root) {
        return fail(u"cannot read %1: %2"_s.arg(path, root.error()));
    }
    const std::vector<DocumentFinding> findings = DocumentCheck::findingsIn(*root);
    const Status status = findings.empty() ? Done : Found;
    if (asJson) {
        QJsonArray objects;
        std::ranges::transform(findings, std::back_inserter(objects), objectOf);
        return print(QJsonObject{{u"document"_s, path}, {u"phrases"_s, sizeOf(SoundsDocument::phrasesOf(*root))},
                         {u"events"_s, sizeOf((*root)->value(DocumentKey::sounds).array())}, {u"findings"_s, objects}},
            status);
    }
    QString lines;
    for (const DocumentFinding& finding : findings) {
        lines += lineOf(finding) + u'\n';
    }
    return print(lines.toUtf8(), status);
}

Status DocumentTasks::exportPhrases(const QString& path, const QString& destination, PhraseExport::Form form)
{
    const Result<DictionaryPointer> root = SoundsDocument::readRoot(path);
    if (!root) {
        return fail(u"cannot read %1: %2"_s.arg(path, root.error()));
    }
    const ArrayPointer phrases = SoundsDocument::phrasesOf(*root);
    if (!phrases) {
        return fail(u"%1 has no list of phrases"_s.arg(path));
    }
    const QByteArray bytes = PhraseExport::of(phrases, form);
    if (destination.isEmpty()) {
        return print(bytes, Done);
    }
    const Result<void> written = AtomicFile::write(destination, bytes);
    return written ? Done : fail(written.error());
}

Status DocumentTasks::import(const QString& path, const QString& destination, bool asJson)
{
    const std::optional<Importers::Source> source = Importers::sourceOf(path);
    if (!source) {
        return fail(u"cannot import %1: its name is not that of a known tool's file"_s.arg(path));
    }
    const Result<DictionaryPointer> root = PropertyList::readFile(path, Importers::maximumSourceSize);
    if (!root) {
        return fail(u"cannot import %1: %2"_s.arg(path, root.error()));
    }
    const Conversion conversion =
        Importers::convert(*root, *source, FormattedText::converters(), [](qsizetype, qsizetype) { return true; });
    if (conversion.outcome != Conversion::Outcome::Converted) {
        return fail(u"cannot import %1: it holds no list of phrases"_s.arg(path));
    }
    const Result<void> written = NewDocument::write(conversion.document, destination);
    return written ? sumUp(conversion, path, destination, asJson) : fail(written.error());
}
