// SPDX-License-Identifier: MIT
#pragma once

#include <core/Phrase.h>
#include <platform/bus/DistributedNotificationCenter.h>

#include <QHash>
#include <QObject>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

/// Answers the notifications of the helper, which are those of this pane too: it finishes what the pane has begun (a
/// row added, a row removed), and has the table show what the helper has changed.
///
/// Rows that another pane has added or removed are in its document, not in this one: it finishes them itself.
class HelperListener final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HelperListener)

public:
    /// What a notification has the pane do. Each is called before the notification is answered.
    struct Actions
    {
        /// The helper has changed the file: the document is to be loaded anew, by @p load, and to be shown.
        std::function<void(const std::function<void()>& load)> reloadDocument;
        std::function<void(const QString& phrase)> showPhrase;
        /// A new row of this pane is to be sorted in, and its phrase edited.
        std::function<void()> editNewRow;
        /// The text stays rich.
        std::function<void()> keepRich;
        /// The helper has ended.
        std::function<void()> showHelperOff;
    };

    /// Rows keep their numbers as long as this lives (a question about a row is open, its text is being typed):
    /// notifications that would move rows wait.
    class RowHold final
    {
    public:
        explicit RowHold(HelperListener& listener);
        ~RowHold();
        Q_DISABLE_COPY_MOVE(RowHold)

    private:
        HelperListener& m_listener;
    };

    explicit HelperListener(Actions actions, QObject* parent = nullptr);

    /// Acts on @p notification and answers it with "RefreshMenu". Those of another object, and some of the helper's,
    /// are not answered.
    void hear(const DistributedNotification& notification);

    /// Tells that this pane has added @p entry to the list, or removed one. The change is finished, and written, when
    /// the notification has come back. Until then an addition outlives what the helper adds.
    void announceAddition(const Phrase& entry);
    void announceRemoval();

    /// What @p entry is now that a question about it has been answered: the helper may have added phrases to the file
    /// while the rows were held. They come in before the document is written, so that the write loses none. Null when
    /// the entry is no longer there.
    Phrase upToDateEntry(const Phrase& entry);

private:
    void answerWaiting();
    void reloadDocument();
    void loadKeepingAdditions();

    void showPhrase(const DistributedNotification& notification);
    void takeInPhrase(const DistributedNotification& notification);
    void finishAddition();
    void finishRemoval();

    Actions m_actions;
    /// By the notification's name; others are only answered.
    QHash<QString, std::function<void(const DistributedNotification&)>> m_effects;
    int m_rowHolds = 0;
    std::vector<DistributedNotification> m_waiting;
    /// What this pane has added and removed without having heard of it yet.
    std::vector<Phrase> m_unfinishedAdditions;
    int m_unfinishedRemovals = 0;
};
