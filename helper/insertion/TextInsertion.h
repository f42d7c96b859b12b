// SPDX-License-Identifier: MIT
#pragma once

#include "TextDelivery.h"

#include <core/Phrase.h>
#include <helper/typing/CompletedPhrase.h>
#include <helper/typing/TypingBuffer.h>
#include <platform/input/InputEvents.h>
#include <platform/plist/PropertyList.h>

#include <QObject>
#include <QString>

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class InputWatcher;

/// Puts the texts of phrases into the program in front: in the place of a phrase that has been typed, or where the
/// caret is. One after the other; a few may wait.
///
/// A typed phrase whose caret has left it before its turn comes (a click, an arrow key, another window) stays as it is.
class TextInsertion final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(TextInsertion)

public:
    struct Session
    {
        /// Tells what the user types meanwhile; null where nothing does. Must be given before whatever finds the
        /// phrases listens to it, or the character that completes a phrase would count as typed after it.
        InputWatcher* input = nullptr;
        /// The window class of the program in front; empty where no window manager tells. Then that of the window with
        /// the focus counts.
        std::function<QString()> frontmostClass;
        /// The lists of phrases to which texts may refer, in the order in which they are looked through; any may be
        /// null.
        std::function<std::vector<PropertyList::ArrayPointer>()> documents;
    };

    explicit TextInsertion(Session session, QObject* parent = nullptr);
    ~TextInsertion() override;

    /// Whether texts can be inserted at all: there must be an X server, and no other display server.
    bool isAvailable() const { return m_delivery != nullptr; }

    /// Replaces what has just been typed by the phrase's text. A phrase without one is left alone.
    void replace(const CompletedPhrase& completed);
    /// Inserts the phrase's text, once the menu that it was chosen in has gone.
    void insert(const Phrase& phrase);

private:
    /// In UTF-16 units.
    static constexpr qsizetype longestMeanwhile = 256;

    struct Job
    {
        Phrase phrase;
        /// In characters; nothing is erased for one that was not typed, nor does it matter what the user does.
        qsizetype typed = 0;
        QString trigger;
        /// What the user has typed since. More than there is room for is never typed before the BackSpaces are sent.
        TypingBuffer meanwhile{longestMeanwhile};
        quint32 focus = 0;
        bool isAbandoned = false;
        PhraseText text;
    };

    void add(const CompletedPhrase& completed, quint32 focus);
    void begin();
    void send();
    void end();
    void takeKey(const KeyPress& press);
    void abandonWaiting();
    std::vector<Job*> waitingForUser();
    static std::vector<DeliveryStep> stepsOf(const Job& job);

    Session m_session;
    /// Null where nothing can be inserted.
    std::unique_ptr<TextDelivery> m_delivery;
    std::deque<Job> m_jobs;
    /// The first job is beyond recall.
    bool m_isSent = false;
};
