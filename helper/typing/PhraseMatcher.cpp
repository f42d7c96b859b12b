// SPDX-License-Identifier: MIT
#include "PhraseMatcher.h"

#include <algorithm>
#include <utility>

namespace {

/// How many BackSpaces take @p text back.
qsizetype charactersOf(QStringView text)
{
    return std::ranges::count_if(text, [](QChar unit) { return !unit.isLowSurrogate(); });
}

} // namespace

void PhraseMatcher::setPhrases(std::shared_ptr<const PhraseIndex> phrases)
{
    if (phrases == m_phrases) {
        return;
    }
    m_phrases = std::move(phrases);
    m_typed.setCapacity(m_phrases ? m_phrases->longest() : 0);
}

void PhraseMatcher::setTriggers(const CharacterBitmap& triggers, bool atOnce)
{
    m_triggers = triggers;
    m_isAtOnce = atOnce;
}

void PhraseMatcher::enterApplication(const QString& path)
{
    m_application = path;
    forget();
}

std::optional<CompletedPhrase> PhraseMatcher::press(const KeyPress& press)
{
    using Key = KeyMeaning::Key;
    // Signed, since the clocks of two devices may disagree a little.
    if (std::chrono::milliseconds(qint32(press.time - m_lastTime)) > longestPause) {
        forget();
    }
    m_lastTime = press.time;
    if (press.meaning.isShortcut) {
        forget();
        return {};
    }
    switch (press.meaning.key) {
    case Key::Silent:
        return {};
    case Key::BackSpace:
        m_typed.removeLast();
        return {};
    case Key::Character:
    case Key::Return:
    case Key::Tab:
        return type(press.meaning.text.view());
    default:
        // Escape may be a trigger.
        std::optional<CompletedPhrase> phrase = type(press.meaning.text.view());
        forget();
        return phrase;
    }
}

std::optional<CompletedPhrase> PhraseMatcher::type(QStringView text)
{
    const bool isTrigger = !m_isAtOnce && text.size() == 1 && m_triggers.contains(text.front());
    std::optional<CompletedPhrase> phrase = isTrigger ? complete(text) : std::nullopt;
    if (!phrase) {
        // A trigger may also be a part of a longer phrase.
        m_typed.append(text);
    }
    return m_isAtOnce ? complete({}) : phrase;
}

std::optional<CompletedPhrase> PhraseMatcher::complete(QStringView trigger)
{
    PhraseIndex::Match match =
        m_phrases ? m_phrases->longestAtEndOf(m_typed.text(), m_application) : PhraseIndex::Match();
    if (!match.entry) {
        return {};
    }
    const qsizetype characters = charactersOf(m_typed.text().last(match.length));
    forget();
    return CompletedPhrase{std::move(match.entry), characters, trigger.toString()};
}
