// SPDX-License-Identifier: MIT
#include "TextInsertion.h"

#include "RichPhraseText.h"

#include <core/Settings.h>
#include <platform/input/InputWatcher.h>

#include <QDateTime>
#include <QLoggingCategory>
#include <QTimer>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.insertion")

/// More come only when a program does not take what it is given.
constexpr size_t maximumJobs = 8;

/// A menu gives the focus back when it has gone.
constexpr auto menuGoes = 100ms;

Typist::Stroke strokeOf(CaretMove move)
{
    using Key = Typist::Key;
    switch (move) {
    case CaretMove::Left:
        return {Key::Left};
    case CaretMove::Up:
        return {Key::Up};
    case CaretMove::Right:
        return {Key::Right};
    case CaretMove::Down:
        return {Key::Down};
    }
    return {Key::Left};
}

/// A text behind all others, as a part of the last one where that is possible: one paste is undone at once.
void append(std::vector<DeliveryStep>& steps, QStringView text)
{
    if (text.isEmpty()) {
        return;
    }
    if (steps.empty() || !std::holds_alternative<TextPiece>(steps.back())) {
        steps.emplace_back(TextPiece{});
    }
    auto& piece = std::get<TextPiece>(steps.back());
    piece.plain += text;
    if (!piece.html.isEmpty()) {
        piece.html = RichPhraseText::appended(piece.html, text.toString());
    }
}

/// Return and Tab do more than their characters, so they are pressed.
void appendTrigger(std::vector<DeliveryStep>& steps, const QString& trigger)
{
    if (trigger == u"\r" || trigger == u"\n") {
        steps.emplace_back(Typist::Stroke{Typist::Key::Return});
    } else if (trigger == u"\t") {
        steps.emplace_back(Typist::Stroke{Typist::Key::Tab});
    } else {
        append(steps, trigger);
    }
}

} // namespace

TextInsertion::TextInsertion(Session session, QObject* parent)
    : QObject(parent)
    , m_session(std::move(session))
    , m_delivery(TextDelivery::ofSession())
{
    if (!m_delivery) {
        qCWarning(log, "texts cannot be inserted in this session: it has no X server of its own");
        return;
    }
    connect(m_delivery.get(), &TextDelivery::ready, this, &TextInsertion::send);
    connect(m_delivery.get(), &TextDelivery::finished, this, &TextInsertion::end);
    if (InputWatcher* const input = m_session.input) {
        connect(m_delivery.get(), &TextDelivery::keyIsPressed, input, &InputWatcher::passOver);
        connect(input, &InputWatcher::keyPressed, this, &TextInsertion::takeKey);
        connect(input, &InputWatcher::buttonPressed, this, &TextInsertion::abandonWaiting);
        connect(input, &InputWatcher::interrupted, this, &TextInsertion::abandonWaiting);
    }
}

TextInsertion::~TextInsertion() = default;

void TextInsertion::replace(const CompletedPhrase& completed)
{
    if (m_delivery && PhraseText::isIn(completed.entry)) {
        add(completed, m_delivery->focus());
    }
}

void TextInsertion::insert(const Phrase& phrase)
{
    if (!m_delivery || !PhraseText::isIn(phrase)) {
        return;
    }
    QTimer::singleShot(menuGoes, this, [this, phrase] { add({phrase.dictionary(), 0, {}}, 0); });
}

void TextInsertion::add(const CompletedPhrase& completed, quint32 focus)
{
    if (m_jobs.size() == maximumJobs) {
        qCWarning(log, "a phrase's text is not inserted: too many are waiting for the program in front");
        return;
    }
    Job& job = m_jobs.emplace_back();
    job.phrase = completed.entry;
    job.typed = completed.characters;
    job.trigger = completed.trigger;
    job.focus = focus;
    if (m_jobs.size() == 1) {
        begin();
    }
}

/// Resolves the text first, so that nothing takes time between the last key that is heard and the BackSpaces.
void TextInsertion::begin()
{
    m_isSent = false;
    Job& job = m_jobs.front();
    const auto documents = m_session.documents ? m_session.documents() : std::vector<PropertyList::ArrayPointer>();
    if (auto text = PhraseText::of(job.phrase, documents, QDateTime::currentDateTime())) {
        job.text = std::move(*text);
    } else {
        qCWarning(log, "a phrase's text is not inserted: it is too long");
        job.isAbandoned = true;
    }
    const QString told = m_session.frontmostClass ? m_session.frontmostClass() : QString();
    m_delivery->prepare(PasteWays::of(told.isEmpty() ? m_delivery->focusClass() : told));
}

void TextInsertion::send()
{
    Job& job = m_jobs.front();
    job.isAbandoned = job.isAbandoned || (job.typed > 0 && job.focus != m_delivery->focus());
    m_isSent = true;
    m_delivery->send(job.isAbandoned ? std::vector<DeliveryStep>() : stepsOf(job));
}

void TextInsertion::end()
{
    m_jobs.pop_front();
    if (!m_jobs.empty()) {
        begin();
    }
}

std::vector<DeliveryStep> TextInsertion::stepsOf(const Job& job)
{
    std::vector<DeliveryStep> steps;
    const QStringView meanwhile = job.meanwhile.text();
    if (job.typed > 0) {
        const qsizetype since = caretStepsIn(job.trigger) + caretStepsIn(meanwhile);
        steps.emplace_back(Typist::Stroke{Typist::Key::BackSpace, job.typed + since});
    }
    for (const TextStep& step : job.text.steps) {
        if (const auto* const move = std::get_if<CaretMove>(&step)) {
            steps.emplace_back(strokeOf(*move));
        } else if (const auto& piece = std::get<TextPiece>(step); !piece.plain.isEmpty() || !piece.html.isEmpty()) {
            steps.emplace_back(piece);
        }
    }
    const bool keepsTrigger = job.text.keepsTrigger.value_or(Settings::triggerInhibPref.value() != 1);
    const QString trigger = keepsTrigger ? job.trigger : QString();
    appendTrigger(steps, trigger);
    append(steps, meanwhile);
    if (const auto after = job.text.charactersAfterCaret) {
        const qsizetype behind = *after + caretStepsIn(trigger) + caretStepsIn(meanwhile);
        steps.emplace_back(Typist::Stroke{Typist::Key::Left, behind});
    }
    return steps;
}

/// Those whose BackSpaces have not been sent yet.
std::vector<TextInsertion::Job*> TextInsertion::waitingForUser()
{
    std::vector<Job*> waiting;
    for (size_t index = m_isSent ? 1 : 0; index < m_jobs.size(); ++index) {
        if (m_jobs[index].typed > 0) {
            waiting.push_back(&m_jobs[index]);
        }
    }
    return waiting;
}

void TextInsertion::takeKey(const KeyPress& press)
{
    using Key = KeyMeaning::Key;
    const Key key = press.meaning.key;
    if (m_jobs.empty() || key == Key::Silent) {
        return;
    }
    for (Job* const job : waitingForUser()) {
        if (key == Key::Character && !press.meaning.isShortcut) {
            const QStringView text = press.meaning.text.view();
            job->isAbandoned = job->isAbandoned || job->meanwhile.text().size() + text.size() > longestMeanwhile;
            job->meanwhile.append(text);
        } else if (key == Key::BackSpace && !press.meaning.isShortcut && !job->meanwhile.text().isEmpty()) {
            job->meanwhile.removeLast();
        } else {
            job->isAbandoned = true;
        }
    }
}

void TextInsertion::abandonWaiting()
{
    for (Job* const job : waitingForUser()) {
        job->isAbandoned = true;
    }
}
