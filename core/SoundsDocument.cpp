// SPDX-License-Identifier: MIT
#include "SoundsDocument.h"

#include "EntryScan.h"
#include "PhraseOrder.h"
#include "Settings.h"

#include <QLoggingCategory>

#include <algorithm>
#include <atomic>
#include <iterator>
#include <system_error>
#include <utility>

using namespace Qt::StringLiterals;
using PropertyList::ArrayPointer;
using PropertyList::DictionaryPointer;
using PropertyList::Value;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.document")

ArrayPointer dictionariesOf(const ArrayPointer& list)
{
    if (!list) {
        return {};
    }
    std::vector<Value> entries;
    entries.reserve(size_t(list->size()));
    std::ranges::copy_if(
        *list, std::back_inserter(entries), [](const Value& value) { return value.dictionaryInPlace() != nullptr; });
    return PropertyList::Array::create(std::move(entries));
}

void sortPhrases(const ArrayPointer& phrases, int order)
{
    if (!phrases) {
        return;
    }
    switch (order) {
    case 0:
        PhraseOrder::sort(*phrases, PhraseKey::phrase, PhraseOrder::Comparison::CaseInsensitiveText);
        break;
    case 1:
        PhraseOrder::sort(*phrases, PhraseKey::soundFilepath, PhraseOrder::Comparison::CaseInsensitiveText);
        break;
    case 2:
        PhraseOrder::sort(*phrases, PhraseKey::sortOrder, PhraseOrder::Comparison::Natural);
        break;
    default:
        break;
    }
}

} // namespace

SoundsDocument::Contents SoundsDocument::read(const QString& path, int order)
{
    Contents contents{.path = path, .stamp = FileStamp::of(path), .order = order};
    contents.root = readRoot(path);
    if (contents.root) {
        sortPhrases(phrasesOf(*contents.root), order);
    }
    return contents;
}

Result<DictionaryPointer> SoundsDocument::readRoot(const QString& path)
{
    return PropertyList::readFile(path, DocumentFile::maximumSize);
}

ArrayPointer SoundsDocument::phrasesOf(const DictionaryPointer& root)
{
    const bool hasClippings = root->contains(DocumentKey::clippings);
    return root->value(hasClippings ? DocumentKey::clippings : DocumentKey::snippets).array();
}

SoundsDocument& SoundsDocument::shared()
{
    static SoundsDocument document;
    return document;
}

void SoundsDocument::setPath(const QString& path)
{
    if (path != m_path) {
        m_file.finish();
    }
    m_path = path;
}

void SoundsDocument::readAhead(const QString& path)
{
    try {
        m_ahead = std::async(std::launch::async, &SoundsDocument::read, path, Settings::sortPref.value());
    } catch (const std::system_error&) {
        // Without a thread to be had, load() reads.
    }
}

void SoundsDocument::load()
{
    if (!isAsLoaded()) {
        m_file.finish();
        if (m_path.isEmpty()) {
            sort();
        } else {
            take(contentsOfFile());
        }
    }
    m_filteredEvents = dictionariesOf(m_events);
}

/// Whether loading would give what is in memory.
bool SoundsDocument::isAsLoaded() const
{
    if (!m_root || !m_phrases || m_root->revision() != 0 || m_phrases->revision() != m_loadedRevision ||
        m_loadedOrder != Settings::sortPref.value() || !m_file.isUpToDate(m_path)) {
        return false;
    }
    std::atomic<bool> isChanged = false;
    EntryScan::forEachRow(*m_phrases, PhraseKey::phrase, [&isChanged](qsizetype, const EntryScan::Row& row) {
        if (!PropertyList::isUnchanged(*row.entry)) {
            isChanged = true;
        }
    });
    return !isChanged && std::ranges::all_of(*m_root, [this](const PropertyList::Dictionary::Entry& entry) {
        return entry.value.arrayInPlace() == m_phrases.data() || PropertyList::isUnchanged(entry.value);
    });
}

/// Of the file that is there now.
SoundsDocument::Contents SoundsDocument::contentsOfFile()
{
    const int order = Settings::sortPref.value();
    if (m_ahead.valid()) {
        Contents ahead = m_ahead.get();
        if (ahead.path == m_path && ahead.order == order && ahead.stamp == FileStamp::of(m_path)) {
            return ahead;
        }
    }
    return read(m_path, order);
}

void SoundsDocument::take(const Contents& contents)
{
    m_file.setVersion(contents.path, contents.stamp);
    reportReading(contents.root.error());
    m_root = contents.root ? *contents.root : DictionaryPointer();
    m_phrases = {};
    m_events = {};
    if (m_root) {
        m_phrases = phrasesOf(m_root);
        m_events = m_root->value(DocumentKey::sounds).array();
    }
    m_filteredEvents = dictionariesOf(m_events);
    m_loadedOrder = contents.order;
    m_loadedRevision = m_phrases ? m_phrases->revision() : 0;
}

/// A file that stays broken is loaded more than once, but told once.
void SoundsDocument::reportReading(const QString& problem)
{
    const QString line = problem.isEmpty() ? QString() : u"cannot read document %1: %2"_s.arg(m_path, problem);
    if (line != m_reportedProblem && !line.isEmpty()) {
        qCWarning(log).noquote() << line;
    }
    m_reportedProblem = line;
}

void SoundsDocument::sort()
{
    sortPhrases(m_phrases, Settings::sortPref.value());
}

bool SoundsDocument::save()
{
    return m_root && m_file.write(m_path, m_root);
}

void SoundsDocument::saveSoon()
{
    if (m_root) {
        m_file.writeSoon(m_path, m_root);
    }
}

void SoundsDocument::prepareSaving()
{
    if (m_root) {
        m_file.prepare(m_root);
    }
}
