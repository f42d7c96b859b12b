// SPDX-License-Identifier: MIT
#include "HelperListener.h"

#include <core/BYGlobals.h>
#include <core/Changes.h>
#include <core/PhraseList.h>

#include <utility>

namespace {

/// Whether this notification makes the table look for a row or give rows new numbers.
bool movesRows(const QString& name)
{
    return name == NotificationName::newRowAdded || name == NotificationName::newRowAddedViaMenu ||
           name == NotificationName::scrollToAbb;
}

QString phraseOf(const DistributedNotification& notification)
{
    const PropertyList::Value* phrase =
        notification.userInfo ? notification.userInfo->find(PhraseKey::phrase) : nullptr;
    return phrase ? phrase->textValue() : QString();
}

} // namespace

HelperListener::HelperListener(Actions actions, QObject* parent)
    : QObject(parent)
    , m_actions(std::move(actions))
    , m_effects{
          {NotificationName::keepRich, [this](const auto&) { m_actions.keepRich(); }},
          {NotificationName::byeBye, [this](const auto&) { m_actions.showHelperOff(); }},
          {NotificationName::turnExpansionOn, [](const auto&) { editEntryInProgress = false; }},
          {NotificationName::turnExpansionOff, [](const auto&) { editEntryInProgress = true; }},
          {NotificationName::scrollToAbb, [this](const auto& told) { showPhrase(told); }},
          {NotificationName::newRowAddedViaMenu, [this](const auto& told) { takeInPhrase(told); }},
          {NotificationName::newRowAdded, [this](const auto&) { finishAddition(); }},
          {NotificationName::rowRemoved, [this](const auto&) { finishRemoval(); }},
      }
{
}

void HelperListener::hear(const DistributedNotification& notification)
{
    if (notification.object != BYGlobals::appID() || notification.name == NotificationName::accessibilityIsOff) {
        return;
    }
    if (m_rowHolds > 0 && movesRows(notification.name)) {
        m_waiting.push_back(notification);
        return;
    }
    if (const auto effect = m_effects.constFind(notification.name); effect != m_effects.cend()) {
        (*effect)(notification);
    }
    if (notification.name != NotificationName::refreshMenu) {
        Changes::tell(NotificationName::refreshMenu);
    }
}

HelperListener::RowHold::RowHold(HelperListener& listener)
    : m_listener(listener)
{
    ++m_listener.m_rowHolds;
}

// The one who asks goes on with the rows that it knows before anything that waited is answered.
HelperListener::RowHold::~RowHold()
{
    if (--m_listener.m_rowHolds == 0) {
        QMetaObject::invokeMethod(&m_listener, &HelperListener::answerWaiting, Qt::QueuedConnection);
    }
}

void HelperListener::answerWaiting()
{
    for (const DistributedNotification& notification : std::exchange(m_waiting, {})) {
        hear(notification);
    }
}

// An added row is written only when its notification has come back: by then it is where the sort puts it, and its text
// is being typed.
void HelperListener::announceAddition(const Phrase& entry)
{
    m_unfinishedAdditions.push_back(entry);
    Changes::tell(NotificationName::newRowAdded);
}

void HelperListener::announceRemoval()
{
    ++m_unfinishedRemovals;
    Changes::tell(NotificationName::rowRemoved);
}

Phrase HelperListener::upToDateEntry(const Phrase& entry)
{
    bool isOutdated = false;
    for (DistributedNotification& waiting : m_waiting) {
        if (waiting.name == NotificationName::newRowAddedViaMenu) {
            // What is left to do for the phrase is to show it.
            waiting.name = NotificationName::scrollToAbb;
            isOutdated = true;
        }
    }
    if (!isOutdated) {
        return entry;
    }
    const PropertyList::ArrayPointer before = BYGlobals::clippingsArray();
    reloadDocument();
    const PropertyList::ArrayPointer now = BYGlobals::clippingsArray();
    return DocumentEntry::at(now, PhraseList::rowOfCounterpart(now, before, entry.dictionary()));
}

void HelperListener::reloadDocument()
{
    m_actions.reloadDocument([this] { loadKeepingAdditions(); });
}

// What the helper wrote does not hold the rows of this pane that wait for their notification.
void HelperListener::loadKeepingAdditions()
{
    const PropertyList::ArrayPointer before = BYGlobals::clippingsArray();
    BYGlobals::fillArray();
    const PropertyList::ArrayPointer now = BYGlobals::clippingsArray();
    for (const Phrase& entry : m_unfinishedAdditions) {
        const bool isOfThisDocument = PhraseList::rowOfEntry(before, entry.dictionary()) >= 0;
        if (now && isOfThisDocument && PhraseList::rowOfCounterpart(now, before, entry.dictionary()) < 0) {
            now->append(entry.dictionary());
        }
    }
}

void HelperListener::showPhrase(const DistributedNotification& notification)
{
    const QString phrase = phraseOf(notification);
    m_actions.showPhrase(phrase.isNull() ? notification.object : phrase);
}

void HelperListener::takeInPhrase(const DistributedNotification& notification)
{
    reloadDocument();
    m_actions.showPhrase(phraseOf(notification));
}

void HelperListener::finishAddition()
{
    if (!m_unfinishedAdditions.empty()) {
        m_unfinishedAdditions.erase(m_unfinishedAdditions.begin());
        m_actions.editNewRow();
    }
}

void HelperListener::finishRemoval()
{
    if (m_unfinishedRemovals > 0) {
        --m_unfinishedRemovals;
        Changes::saveDocument({});
    }
}
