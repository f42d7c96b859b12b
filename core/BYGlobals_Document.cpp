// SPDX-License-Identifier: MIT
#include "BYGlobals.h"

#include "DocumentBackups.h"
#include "PhraseList.h"
#include "PhraseOrder.h"
#include "SharedNames.h"

#include <platform/storage/AtomicFile.h>
#include <platform/storage/FileStamp.h>

#include <QLoggingCategory>

using namespace Qt::StringLiterals;
using PropertyList::ArrayPointer;
using PropertyList::DictionaryPointer;
using PropertyList::Value;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.document")

/// In bytes: eight times the largest document that is of any use.
constexpr qint64 maximumSize = 1 << 28;

struct Document
{
    DictionaryPointer root;
    ArrayPointer phrases;
    ArrayPointer events;
    ArrayPointer filteredEvents;
};

/// The version of a file that is in memory, or kept otherwise: nothing is lost when it is overwritten.
struct SafeVersion
{
    QString path;
    std::optional<FileStamp> stamp;
};

Document document;
SafeVersion safeVersion;
QString documentPath = u""_s;
DictionaryPointer applicationDocuments;
QString loadProblem;

/// A file that stays broken is loaded more than once, but told once.
void reportLoading(const QString& path, const QString& problem)
{
    const QString line = problem.isEmpty() ? QString() : u"cannot read document %1: %2"_s.arg(path, problem);
    if (line != loadProblem && !line.isEmpty()) {
        qCWarning(log).noquote() << line;
    }
    loadProblem = line;
}

void load(const QString& path)
{
    if (path != safeVersion.path) {
        AtomicFile::removeLeftovers(path);
    }
    // A change from here on is noticed: it makes another stamp than this one.
    safeVersion = {path, FileStamp::of(path)};
    const Result<DictionaryPointer> root = PropertyList::readFile(path, maximumSize);
    reportLoading(path, root.error());
    document.root = root ? *root : DictionaryPointer();
    document.phrases = {};
    document.events = {};
    if (root) {
        const bool hasClippings = document.root->contains(DocumentKey::clippings);
        document.phrases = document.root->value(hasClippings ? DocumentKey::clippings : DocumentKey::snippets).array();
        document.events = document.root->value(DocumentKey::sounds).array();
    }
}

/// Keeps the version that another program has put in the place of the one that was read. False, after a log line, when
/// it could not be kept.
bool keepVersionOfOthers(const QString& path)
{
    const std::optional<FileStamp> stamp = FileStamp::of(path);
    if (!stamp || (path == safeVersion.path && stamp == safeVersion.stamp)) {
        return true;
    }
    const Result<QString> copy = DocumentBackups::keep(path, maximumSize);
    if (!copy) {
        qCWarning(log).noquote() << u"document %1, changed by another program, is not overwritten: %2"_s.arg(
            path, copy.error());
        return false;
    }
    safeVersion = {path, stamp};
    qCWarning(log).noquote() << u"document %1 was changed by another program; that version is kept as %2"_s.arg(
        path, *copy);
    return true;
}

ArrayPointer soundEntries(const ArrayPointer& list)
{
    if (!list) {
        return {};
    }
    ArrayPointer entries = PropertyList::Array::create();
    entries->reserve(list->size());
    for (const Value& entry : *list) {
        if (entry.dictionary()) {
            entries->append(entry);
        }
    }
    return entries;
}

} // namespace

void BYGlobals::init()
{
    documentPath = retrieveFromUserDefaults(SettingKey::defaultFilePath).textValue();
    if (!applicationDocuments) {
        applicationDocuments = retrieveUntypedObjectFromUserDefaults(SettingKey::file4App).dictionary();
    }
    if (!applicationDocuments) {
        applicationDocuments = PropertyList::Dictionary::create();
    }
}

void BYGlobals::fillArray()
{
    if (!documentPath.isEmpty()) {
        load(documentPath);
    }
    sortArray();
    document.filteredEvents = soundEntries(document.events);
}

void BYGlobals::sortArray()
{
    if (!document.phrases) {
        return;
    }
    switch (retrieveFromUserDefaults(SettingKey::sortPref).integerValue()) {
    case 0:
        PhraseOrder::sort(*document.phrases, PhraseKey::phrase, PhraseOrder::Comparison::CaseInsensitiveText);
        break;
    case 1:
        PhraseOrder::sort(*document.phrases, PhraseKey::soundFilepath, PhraseOrder::Comparison::CaseInsensitiveText);
        break;
    case 2:
        PhraseOrder::sort(*document.phrases, PhraseKey::sortOrder, PhraseOrder::Comparison::Natural);
        break;
    default:
        break;
    }
}

QString BYGlobals::defaultFilePath()
{
    return documentPath;
}

void BYGlobals::setDefaultFilePath(const QString& path)
{
    documentPath = path;
}

DictionaryPointer BYGlobals::file4app()
{
    return applicationDocuments;
}

DictionaryPointer BYGlobals::clippingsDictionary()
{
    return document.root;
}

ArrayPointer BYGlobals::clippingsArray()
{
    return document.phrases;
}

ArrayPointer BYGlobals::soundsPrefsArray()
{
    return document.events;
}

ArrayPointer BYGlobals::soundsPrefsArrayFiltered()
{
    return document.filteredEvents;
}

DictionaryPointer BYGlobals::clippingAtRow(qsizetype row)
{
    const bool exists = document.phrases && row >= 0 && row < document.phrases->size();
    const DictionaryPointer entry = exists ? document.phrases->at(row).dictionary() : DictionaryPointer();
    return entry ? entry : PropertyList::Dictionary::create();
}

QString BYGlobals::fullTextFor(const QString& phrase)
{
    const DictionaryPointer entry =
        PhraseList::entryAt(document.phrases, PhraseList::rowOfPhrase(document.phrases, phrase));
    return entry ? entry->value(PhraseKey::soundFilepath).string() : QString();
}

void BYGlobals::writeDocument()
{
    if (!document.root || !keepVersionOfOthers(documentPath)) {
        return;
    }
    if (const auto error = AtomicFile::write(documentPath, PropertyList::write(document.root))) {
        qCWarning(log).noquote() << *error;
        return;
    }
    safeVersion = {documentPath, FileStamp::of(documentPath)};
}
