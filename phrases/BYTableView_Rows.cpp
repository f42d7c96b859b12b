#include "BYTableView.h"

#include <QLoggingCategory>
#include <QScopedValueRollback>

#include <BYGlobals.h>
#include <Bundle.h>
#include <PhraseList.h>
#include <PhraseOrder.h>
#include <RemovalQuestion.h>
#include <SharedNames.h>

#include <algorithm>

using namespace Qt::StringLiterals;

using PropertyList::DictionaryPointer;

Q_LOGGING_CATEGORY(logPhraseRows, "blipsy.phrases")

DictionaryPointer BYTableView::entryAt(int row) const
{
    return PhraseList::entryAt(BYGlobals::clippingsArray(), row);
}

void BYTableView::addRow(QObject*)
{
    if (editEntryInProgress) {
        return;
    }
    const Bundle bundle = Bundle::bundleWithIdentifier(paneBundleIdentifier);
    const DictionaryPointer entry = PropertyList::Dictionary::create();
    entry->insert(PhraseKey::phrase, bundle.localizedString(u"my new phrase"_s));
    entry->insert(
        PhraseKey::soundFilepath, bundle.localizedString(bundle.resourcePath() + u"/defaultPhraseSound.aif"_s));
    if (const PropertyList::ArrayPointer phrases = BYGlobals::clippingsArray()) {
        phrases->append(entry);
    }
    BYGlobals::sendNotification(NotificationName::newRowAdded);
}

void BYTableView::removeRow(QObject*)
{
    if (editEntryInProgress) {
        qCInfo(logPhraseRows).noquote() << u"remove row called but editEntryInProgress"_s;
        return;
    }
    int row = selectedRow();
    if (row == -1) {
        return;
    }
    const DictionaryPointer entry = entryAt(row);
    if (gConfirmRemove && !confirmRemoval()) {
        gConfirmRemove = true;
        return;
    }
    if (entry) {
        row = PhraseList::rowOfEntry(BYGlobals::clippingsArray(), upToDateEntry(entry));
    }
    // Text that was not saved goes with its phrase: there is nothing left to ask about.
    setEditPaneDirty(false);
    if (const PropertyList::ArrayPointer phrases = BYGlobals::clippingsArray();
        phrases && row >= 0 && row < phrases->size()) {
        phrases->removeAt(row);
    }
    noteNumberOfRowsChanged();
    reloadData();
    BYGlobals::sendNotification(NotificationName::rowRemoved);
    clearEditPane();
    const int rowBefore = std::max(row - 1, -1);
    BYGlobals::setSelectedClippingRowForEditing(rowBefore);
    selectRow_byExtendingSelection(rowBefore, false);
    scrollRowToVisible(rowBefore);
    gConfirmRemove = true;
}

bool BYTableView::confirmRemoval()
{
    const RowHold hold(*this);
    return RemovalQuestion::confirm(window(),
        localized(u"Are you sure you wish to remove this phrase?\nYou will not be able to undo this operation."_s));
}

void BYTableView::tableView_sortDescriptorsDidChange(TableView*, const QList<SortDescriptor>&)
{
    reloadFollowingSelection([this] {
        const PropertyList::ArrayPointer phrases = BYGlobals::clippingsArray();
        if (!phrases) {
            return;
        }
        const QList<SortDescriptor> descriptors = sortDescriptors();
        // Stable, so that the first descriptor, sorted by last, has the most say.
        std::for_each(descriptors.crbegin(), descriptors.crend(), [&phrases](const SortDescriptor& descriptor) {
            PhraseOrder::sort(*phrases, descriptor.key, PhraseOrder::Comparison::CaseInsensitiveText,
                descriptor.ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
        });
    });
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
    const DictionaryPointer entry = entryAt(selectedRow());
    change();

    const PropertyList::ArrayPointer phrases = BYGlobals::clippingsArray();
    int row = PhraseList::rowOfEntry(phrases, entry);
    const bool isSameEntry = row >= 0;
    if (entry && !isSameEntry) {
        row = PhraseList::rowOfPhrase(phrases, entry->value(PhraseKey::phrase).stringView());
    }
    {
        const QScopedValueRollback following(m_isFollowingSelection, true);
        noteNumberOfRowsChanged();
        reloadData();
        selectRow_byExtendingSelection(row, false);
    }
    BYGlobals::setSelectedClippingRowForEditing(row);
    if (row == -1 && BYGlobals::editEntryPaneTextIsDirty()) {
        qCWarning(logPhraseRows).noquote() << u"unsaved text dropped: its phrase is no longer in the document"_s;
    }
    const bool holdsUnsavedText = row >= 0 && BYGlobals::editEntryPaneTextIsDirty();
    if (!isSameEntry && !holdsUnsavedText) {
        loadEditPane(row);
    }
}
