// SPDX-License-Identifier: MIT
#include "SoundsDocument.h"

#include "PhraseOrder.h"
#include "Settings.h"

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
    m_file.beginReading(m_path);
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
