// SPDX-License-Identifier: MIT
#include "SoundsDocument.h"

#include "DocumentBackups.h"
#include "PhraseOrder.h"
#include "Settings.h"

#include <platform/storage/AtomicFile.h>

#include <QLoggingCategory>

#include <algorithm>
#include <iterator>

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

} // namespace

Result<DictionaryPointer> SoundsDocument::readRoot(const QString& path)
{
    return PropertyList::readFile(path, maximumSize);
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

void SoundsDocument::load()
{
    if (!m_path.isEmpty()) {
        read();
    }
    sort();
    m_filteredEvents = dictionariesOf(m_events);
}

void SoundsDocument::read()
{
    if (m_path != m_safePath) {
        AtomicFile::removeLeftovers(m_path);
    }
    // A change from here on is noticed: it makes another stamp than this one.
    m_safePath = m_path;
    m_safeStamp = FileStamp::of(m_path);
    const Result<DictionaryPointer> root = readRoot(m_path);
    reportReading(root.error());
    m_root = root ? *root : DictionaryPointer();
    m_phrases = {};
    m_events = {};
    if (m_root) {
        m_phrases = phrasesOf(m_root);
        m_events = m_root->value(DocumentKey::sounds).array();
    }
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
    if (!m_phrases) {
        return;
    }
    switch (Settings::sortPref.value()) {
    case 0:
        PhraseOrder::sort(*m_phrases, PhraseKey::phrase, PhraseOrder::Comparison::CaseInsensitiveText);
        break;
    case 1:
        PhraseOrder::sort(*m_phrases, PhraseKey::soundFilepath, PhraseOrder::Comparison::CaseInsensitiveText);
        break;
    case 2:
        PhraseOrder::sort(*m_phrases, PhraseKey::sortOrder, PhraseOrder::Comparison::Natural);
        break;
    default:
        break;
    }
}

/// Keeps the version that another program has put in the place of the one that was read. False, after a log line, when
/// it could not be kept.
bool SoundsDocument::keepVersionOfOthers()
{
    const std::optional<FileStamp> stamp = FileStamp::of(m_path);
    if (!stamp || (m_path == m_safePath && stamp == m_safeStamp)) {
        return true;
    }
    const Result<QString> copy = DocumentBackups::keep(m_path, maximumSize);
    if (!copy) {
        qCWarning(log).noquote() << u"document %1, changed by another program, is not overwritten: %2"_s.arg(
            m_path, copy.error());
        return false;
    }
    m_safePath = m_path;
    m_safeStamp = stamp;
    qCWarning(log).noquote() << u"document %1 was changed by another program; that version is kept as %2"_s.arg(
        m_path, *copy);
    return true;
}

bool SoundsDocument::isUpToDate() const
{
    return m_safeStamp && m_path == m_safePath && m_safeStamp == FileStamp::of(m_path);
}

bool SoundsDocument::save()
{
    if (!m_root || !keepVersionOfOthers()) {
        return false;
    }
    DocumentBackups::keepBeforeFirstWrite(m_path, maximumSize);
    if (const auto written = AtomicFile::write(m_path, PropertyList::write(m_root)); !written) {
        qCWarning(log).noquote() << written.error();
        return false;
    }
    m_safePath = m_path;
    m_safeStamp = FileStamp::of(m_path);
    return true;
}
