// SPDX-License-Identifier: MIT
#include "BYTableView.h"

#include <core/BYGlobals.h>
#include <core/PhraseList.h>
#include <core/SharedNames.h>
#include <platform/controls/Matrix.h>
#include <platform/controls/Slider.h>

#include <QCheckBox>
#include <QLabel>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

using PropertyList::DictionaryPointer;
using PropertyList::Value;

namespace {

constexpr int phraseColumn = 1;

void selectCell(Matrix* matrix, int row, int column)
{
    if (matrix) {
        matrix->setState_atRow_column(true, row, column);
    }
}

/// Whether this notification makes the table look for a row or give rows new numbers.
bool movesRows(const QString& name)
{
    return name == NotificationName::newRowAdded || name == NotificationName::newRowAddedViaMenu ||
           name == NotificationName::scrollToAbb;
}

QString phraseOf(const DistributedNotification& notification)
{
    const Value* phrase = notification.userInfo ? notification.userInfo->find(PhraseKey::phrase) : nullptr;
    return phrase ? phrase->textValue() : QString();
}

} // namespace

void BYTableView::updateSettingsFromPrefs()
{
    BYGlobals::fillArray();
    if (playSoundOnDropPrefButton) {
        playSoundOnDropPrefButton->setChecked(Settings::playSoundOnDrop.value());
    }
    selectCell(menuPrefsMatrix, Settings::menuPref.value(), 0);
    selectCell(sortPrefsMatrix, 0, Settings::sortPref.value());
    selectCell(iTunesAnnouncerPrefMatrix, 0, Settings::announcerPref.value());
    updateClippingsPopUpButton();
    updateVolumeSlider();
}

void BYTableView::updateVolumeSlider()
{
    const DictionaryPointer root = BYGlobals::clippingsDictionary();
    const Value* volume = root ? root->find(DocumentKey::setVolume) : nullptr;
    if (myVolumeSlider) {
        myVolumeSlider->setFloatValue(volume ? float(volume->doubleValue()) : 0);
    }
    if (myVolumeSliderLabel) {
        myVolumeSliderLabel->setText(localized(u"Set volume:"_s));
    }
}

void BYTableView::scrollToAbb(const QString& phrase)
{
    const int row = PhraseList::rowOfPhrase(BYGlobals::clippingsArray(), phrase);
    if (row >= 0) {
        selectRow_byExtendingSelection(row, false);
        scrollRowToVisible(row);
    }
}

void BYTableView::prefsChanged(const DistributedNotification& notification)
{
    if (notification.object != appID || notification.name == NotificationName::accessibilityIsOff) {
        return;
    }
    if (m_rowHolds > 0 && movesRows(notification.name)) {
        m_waitingNotifications.push_back(notification);
        return;
    }
    answer(notification);
    if (notification.name != NotificationName::refreshMenu) {
        BYGlobals::sendNotification(NotificationName::refreshMenu);
    }
}

BYTableView::RowHold::RowHold(BYTableView& table)
    : m_table(table)
{
    ++m_table.m_rowHolds;
}

// The one who asks goes on with the rows that it knows before anything that waited is answered.
BYTableView::RowHold::~RowHold()
{
    if (--m_table.m_rowHolds == 0) {
        QMetaObject::invokeMethod(&m_table, &BYTableView::answerWaitingNotifications, Qt::QueuedConnection);
    }
}

void BYTableView::answerWaitingNotifications()
{
    for (const DistributedNotification& notification : std::exchange(m_waitingNotifications, {})) {
        prefsChanged(notification);
    }
}

// The helper may have added phrases to the file while the rows were held. They come in before the document is written,
// so that the write loses none; what is left to do for them is to show them. The change goes to what the entry has
// become in the file, or nowhere when it is no longer there.
DictionaryPointer BYTableView::upToDateEntry(const DictionaryPointer& entry)
{
    bool isOutdated = false;
    for (DistributedNotification& waiting : m_waitingNotifications) {
        if (waiting.name == NotificationName::newRowAddedViaMenu) {
            waiting.name = NotificationName::scrollToAbb;
            isOutdated = true;
        }
    }
    if (!isOutdated) {
        return entry;
    }
    const PropertyList::ArrayPointer before = BYGlobals::clippingsArray();
    reloadDocument();
    return entryAt(PhraseList::rowOfCounterpart(BYGlobals::clippingsArray(), before, entry));
}

void BYTableView::answer(const DistributedNotification& notification)
{
    const QString& name = notification.name;
    if (name == NotificationName::keepRich) {
        selectCell(plainOrRichRadioButton, 0, 1);
    } else if (name == NotificationName::byeBye) {
        selectCell(onOffRadioButton, 0, 1);
    } else if (name == NotificationName::scrollToAbb) {
        const QString phrase = phraseOf(notification);
        scrollToAbb(phrase.isNull() ? notification.object : phrase);
    } else if (name == NotificationName::turnExpansionOn) {
        editEntryInProgress = false;
    } else if (name == NotificationName::turnExpansionOff) {
        editEntryInProgress = true;
    } else if (name == NotificationName::newRowAddedViaMenu) {
        showRowAddedViaMenu(phraseOf(notification));
    } else if (m_unfinishedRowChanges.removeOne(name)) {
        if (name == NotificationName::newRowAdded) {
            editNewRow();
        } else {
            Changes::saveDocument({});
        }
    }
}

void BYTableView::showRowAddedViaMenu(const QString& phrase)
{
    reloadDocument();
    scrollToAbb(phrase);
}

void BYTableView::editNewRow()
{
    reloadInPreferredOrder(&BYGlobals::sortArray);
    scrollToAbb(localized(u"newabb"_s));
    editColumn_row_withEvent_select(phraseColumn, selectedRow(), nullptr, true);
    Changes::saveDocument({});
}
