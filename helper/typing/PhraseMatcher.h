// SPDX-License-Identifier: MIT
#pragma once

#include "CompletedPhrase.h"
#include "PhraseIndex.h"
#include "TypingBuffer.h"

#include <platform/bytes/CharacterBitmap.h>
#include <platform/input/InputEvents.h>

#include <QString>

#include <chrono>
#include <memory>
#include <optional>

/// Hears the keys one after the other and says when a phrase is complete: when a trigger character comes after it or,
/// without triggers, with its last character. The longest phrase that has been typed counts. Values only: no clock, no
/// window.
///
/// It remembers no more than the longest phrase has characters, and forgets even those when they cannot belong to a
/// phrase any more: after a completed phrase, and after every key that may move the caret or change other text.
class PhraseMatcher final
{
public:
    /// After a pause of this length nothing typed before counts.
    static constexpr std::chrono::seconds longestPause{30};

    /// The phrases of the document that counts from now on; null for none. What has been typed counts for them, too:
    /// a document may be read again in the middle of a phrase.
    void setPhrases(std::shared_ptr<const PhraseIndex> phrases);

    const std::shared_ptr<const PhraseIndex>& phrases() const { return m_phrases; }

    /// The characters that complete a phrase. With @p atOnce there are none.
    void setTriggers(const CharacterBitmap& triggers, bool atOnce);
    /// The application that has the keyboard now, by the path that phrases are limited to; empty when it has none.
    /// Forgets.
    void enterApplication(const QString& path);

    /// The phrase that this press completes. Allocates nothing, but for the trigger of a completed phrase.
    std::optional<CompletedPhrase> press(const KeyPress& press);

    /// What has been typed so far belongs to no phrase: a click, another window, missed keys, a pause.
    void forget() { m_typed.clear(); }

private:
    std::optional<CompletedPhrase> type(QStringView text);
    std::optional<CompletedPhrase> complete(QStringView trigger);

    std::shared_ptr<const PhraseIndex> m_phrases;
    TypingBuffer m_typed;
    CharacterBitmap m_triggers;
    bool m_isAtOnce = false;
    QString m_application;
    InputTime m_lastTime = 0;
};
