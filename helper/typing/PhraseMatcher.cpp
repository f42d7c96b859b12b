// SPDX-License-Identifier: MIT
#include "PhraseMatcher.h"

using PropertyList::DictionaryPointer;

void PhraseMatcher::setPhrases(const PropertyList::ArrayPointer& phrases)
{
    m_index = PhraseIndex(phrases);
    m_typed.setCapacity(m_index.longest());
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

DictionaryPointer PhraseMatcher::press(const KeyPress& press)
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
        DictionaryPointer entry = type(press.meaning.text.view());
        forget();
        return entry;
    }
}

DictionaryPointer PhraseMatcher::type(QStringView text)
{
    const bool isTrigger = text.size() == 1 && m_triggers.contains(text.front());
    DictionaryPointer entry = isTrigger && !m_isAtOnce ? complete() : DictionaryPointer();
    if (!entry) {
        // A trigger may also be a part of a longer phrase.
        m_typed.append(text);
    }
    return m_isAtOnce ? complete() : entry;
}

DictionaryPointer PhraseMatcher::complete()
{
    DictionaryPointer entry = m_index.longestAtEndOf(m_typed.text(), m_application);
    if (entry) {
        forget();
    }
    return entry;
}
