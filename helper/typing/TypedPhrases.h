// SPDX-License-Identifier: MIT
#pragma once

#include "CompletedPhrase.h"
#include "PhraseDocuments.h"
#include "PhraseMatcher.h"

#include <QDeadlineTimer>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <bitset>
#include <chrono>
#include <memory>
#include <optional>

class InputWatcher;
class WindowWatcher;
struct SessionWindow;

/// Hears what is typed, and says when a phrase of the frontmost application's document is complete. It plays nothing
/// and changes nothing; what it remembers is PhraseMatcher's alone, and is overwritten when it cannot belong to a
/// phrase any more.
class TypedPhrases final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(TypedPhrases)

public:
    /// Listens to @p input and, for the frontmost application, to @p windows; null where there is none of them. They
    /// may be destroyed before this object. Knows nothing before readSettings() and setPhrases(). After @p longestPause
    /// what has been typed is overwritten.
    TypedPhrases(InputWatcher* input, const WindowWatcher* windows,
        std::chrono::milliseconds longestPause = PhraseMatcher::longestPause);
    ~TypedPhrases() override;

    /// Takes the settings as they are now. The documents of applications are read on another thread, when they are
    /// needed.
    void readSettings();

    /// Takes @p phrases (null for none) as those of the document at the path of SoundsDocument::shared().
    void setPhrases(const PhraseDocuments::Index& phrases);

    /// The phrases that count in the frontmost application; null where none does.
    PropertyList::ArrayPointer phrases() const;

    /// Who can want nothing to be heard: the pane while it edits a phrase, the user who pauses the helper, a dialog of
    /// the helper itself, a field that shows nobody what is typed into it, what has locked the session.
    enum class Holder { Pane, User, Dialog, SecretField, Locker };

    /// Hears nothing as long as somebody holds it; forgets all at the beginning and at the end.
    void hold(Holder holder, bool isHeld);

    /// Overwrites what has been typed, also where it was read.
    void forgetAll();

Q_SIGNALS:
    void completed(const CompletedPhrase& phrase);

private:
    void takeKey(const KeyPress& press);
    void enter(const std::optional<SessionWindow>& window);
    void choosePhrases();
    void forget();
    void forgetAfterPause();

    QPointer<InputWatcher> m_input;
    PhraseMatcher m_matcher;
    PhraseDocuments m_documents;
    /// Of the document that counts where an application has none of its own.
    PhraseDocuments::Index m_phrases;
    /// From an application to the path of its document; empty for those in which no phrase counts.
    QHash<QString, QString> m_documentOf;
    QString m_application;
    std::chrono::milliseconds m_longestPause;
    /// Not started anew with each key, which would ask for memory: it looks when the last key was.
    QTimer m_pause;
    QDeadlineTimer m_pauseEnd;
    /// A bit for each holder.
    std::bitset<5> m_holders;
};
