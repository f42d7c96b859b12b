// SPDX-License-Identifier: MIT
#include "TypedPhrases.h"

#include <core/Settings.h>
#include <core/SoundsDocument.h>
#include <core/TriggerCharacters.h>
#include <platform/input/InputWatcher.h>
#include <platform/windows/WindowWatcher.h>

namespace {

/// From an application to the path of its document; empty for those that have none.
QHash<QString, QString> documentsOfApplications()
{
    QHash<QString, QString> documents;
    for (const QString& application : Settings::appsFiles.value().value_or(QStringList())) {
        documents.insert(application, {});
    }
    if (const PropertyList::DictionaryPointer chosen = Settings::file4App.value()) {
        for (const auto& [application, path] : *chosen) {
            documents.insert(application, path.string());
        }
    }
    return documents;
}

} // namespace

TypedPhrases::TypedPhrases(InputWatcher* input, const WindowWatcher* windows, std::chrono::milliseconds longestPause)
    : m_input(input)
    , m_longestPause(longestPause)
{
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &TypedPhrases::forgetAfterPause);
    connect(&m_documents, &PhraseDocuments::loaded, this, &TypedPhrases::choosePhrases);
    if (input) {
        connect(input, &InputWatcher::keyPressed, this, &TypedPhrases::takeKey);
        connect(input, &InputWatcher::buttonPressed, this, &TypedPhrases::forget);
        connect(input, &InputWatcher::interrupted, this, &TypedPhrases::forget);
    }
    if (windows) {
        connect(windows, &WindowWatcher::activated, this, &TypedPhrases::enter);
        enter(windows->active());
    }
}

TypedPhrases::~TypedPhrases() = default;

void TypedPhrases::readSettings()
{
    m_matcher.setTriggers(TriggerCharacters::chosen(), Settings::noTriggers.value());
    m_documentOf = documentsOfApplications();
    m_documents.keepOnly(m_documentOf.values());
    choosePhrases();
}

void TypedPhrases::setPhrases(const PhraseDocuments::Index& phrases)
{
    m_phrases = phrases;
    choosePhrases();
}

PropertyList::ArrayPointer TypedPhrases::phrases() const
{
    return m_matcher.phrases() ? m_matcher.phrases()->phrases() : PropertyList::ArrayPointer();
}

void TypedPhrases::hold(Holder holder, bool isHeld)
{
    m_holders.set(size_t(holder), isHeld);
    forgetAll();
}

void TypedPhrases::takeKey(const KeyPress& press)
{
    if (m_holders.any()) {
        return;
    }
    const std::optional<CompletedPhrase> phrase = m_matcher.press(press);
    m_pauseEnd.setRemainingTime(m_longestPause);
    if (!m_pause.isActive()) {
        m_pause.start(m_longestPause);
    }
    if (phrase) {
        Q_EMIT completed(*phrase);
    }
}

void TypedPhrases::enter(const std::optional<SessionWindow>& window)
{
    m_application = window ? window->applicationPath : QString();
    m_matcher.enterApplication(m_application);
    choosePhrases();
}

/// Those of the application's own document where it has one. One that has not been read yet has none so far.
void TypedPhrases::choosePhrases()
{
    const auto own = m_documentOf.constFind(m_application);
    if (own == m_documentOf.cend() || *own == SoundsDocument::shared().path()) {
        m_matcher.setPhrases(m_phrases);
    } else {
        m_matcher.setPhrases(own->isEmpty() ? nullptr : m_documents.phrasesOf(*own));
    }
}

void TypedPhrases::forget()
{
    m_matcher.forget();
}

void TypedPhrases::forgetAfterPause()
{
    if (!m_pauseEnd.hasExpired()) {
        m_pause.start(int(m_pauseEnd.remainingTime()));
        return;
    }
    forgetAll();
}

void TypedPhrases::forgetAll()
{
    forget();
    if (m_input) {
        m_input->forget();
    }
}
