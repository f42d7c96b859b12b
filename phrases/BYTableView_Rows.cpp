// SPDX-License-Identifier: MIT
#include "BYTableView.h"

#include <core/BYGlobals.h>
#include <core/NewPhrase.h>
#include <core/PhraseList.h>
#include <core/PhraseOrder.h>
#include <core/SharedNames.h>
#include <platform/desktop/Text.h>
#include <sounds/RemovalQuestion.h>
#include <texts/EditSession.h>

#include <QLoggingCategory>
#include <QScopedValueRollback>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.phrases")

} // namespace

Phrase BYTableView::entryAt(int row) const
{
    return DocumentEntry::at(BYGlobals::clippingsArray(), row);
}

void BYTableView::addRow(QObject*)
{
    if (editEntryInProgress) {
        return;
    }
    const Phrase phrase = newPhrase(Text::tr("my new phrase"));
    if (const PropertyList::ArrayPointer phrases = BYGlobals::clippingsArray()) {
        phrases->append(phrase.dictionary());
    }
    m_listener.announceAddition(phrase);
}

void BYTableView::removeRow(QObject*)
{
    if (editEntryInProgress) {
        qCInfo(log).noquote() << u"remove row called but editEntryInProgress"_s;
        return;
    }
    int row = selectedRow();
    if (row == -1) {
        return;
    }
    const Phrase entry = entryAt(row);
    if (gConfirmRemove && !confirmRemoval()) {
        gConfirmRemove = true;
        return;
    }
    if (entry) {
        row = PhraseList::rowOfEntry(BYGlobals::clippingsArray(), m_listener.upToDateEntry(entry).dictionary());
    }
    // Text that was not saved goes with its phrase: there is nothing left to ask about.
    m_editSession->setDirty(false);
    if (const PropertyList::ArrayPointer phrases = BYGlobals::clippingsArray();
        phrases && row >= 0 && row < phrases->size()) {
        phrases->removeAt(row);
    }
    noteNumberOfRowsChanged();
    reloadData();
    m_listener.announceRemoval();
    m_editSession->clear();
    const int rowBefore = std::max(row - 1, -1);
    BYGlobals::setSelectedClippingRowForEditing(rowBefore);
    selectRow_byExtendingSelection(rowBefore, false);
    scrollRowToVisible(rowBefore);
    gConfirmRemove = true;
}

bool BYTableView::confirmRemoval()
{
    const RowHold hold(m_listener);
    return RemovalQuestion::confirm(window(),
        Text::tr("Are you sure you wish to remove this phrase?\nYou will not be able to undo this operation."));
}

void BYTableView::tableView_sortDescriptorsDidChange(TableView* table)
{
    reloadFollowingSelection([table] {
        const PropertyList::ArrayPointer phrases = BYGlobals::clippingsArray();
        if (const QString column = table->sortColumn(); phrases && !column.isEmpty()) {
            PhraseOrder::sort(*phrases, column, PhraseOrder::Comparison::CaseInsensitiveText, table->sortOrder());
        }
    });
}

// Both lists are new ones: the events table shows every event again, whatever its search field still holds, which is
// meant. The selected event keeps its place in the document, not its row.
void BYTableView::reloadDocument(const std::function<void()>& load)
{
    const int eventRow = mySoundEventsTable ? mySoundEventsTable->selectedRow() : -1;
    const int event = PhraseList::rowOfEntry(
        BYGlobals::soundsPrefsArray(), DocumentEntry::at(BYGlobals::soundsPrefsArrayFiltered(), eventRow));
    reloadInPreferredOrder(load);
    if (mySoundEventsTable) {
        mySoundEventsTable->reloadData();
        mySoundEventsTable->selectRow_byExtendingSelection(PhraseList::rowOfEntry(BYGlobals::soundsPrefsArrayFiltered(),
                                                               DocumentEntry::at(BYGlobals::soundsPrefsArray(), event)),
            false);
    }
}

// What the setting sorts is not in the order that the header shows.
void BYTableView::reloadInPreferredOrder(const std::function<void()>& change)
{
    clearSortDescriptors();
    reloadFollowingSelection(change);
}

// Phrases get new rows, or new entries of the same text: the selection and the edit pane stay with their phrase.
void BYTableView::reloadFollowingSelection(const std::function<void()>& change)
{
    const PropertyList::ArrayPointer before = BYGlobals::clippingsArray();
    const Phrase entry = entryAt(selectedRow());
    change();

    const int row = PhraseList::rowOfCounterpart(BYGlobals::clippingsArray(), before, entry.dictionary());
    const bool isSameEntry = row >= 0 && entryAt(row) == entry;
    {
        const QScopedValueRollback following(m_isFollowingSelection, true);
        noteNumberOfRowsChanged();
        reloadData();
        selectRow_byExtendingSelection(row, false);
    }
    BYGlobals::setSelectedClippingRowForEditing(row);
    if (row == -1 && m_editSession->isDirty()) {
        qCWarning(log).noquote() << u"unsaved text dropped: its phrase is no longer in the document"_s;
    }
    const bool holdsUnsavedText = row >= 0 && m_editSession->isDirty();
    if (!isSameEntry && !holdsUnsavedText) {
        loadEditPane(row);
    }
}
