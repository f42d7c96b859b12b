// SPDX-License-Identifier: MIT
#include "BYTableView.h"

#include <core/BYGlobals.h>
#include <core/Phrase.h>
#include <texts/EditSession.h>

#include <QPushButton>

void BYTableView::setEditSession(EditSession& session)
{
    m_editSession = &session;
}

void BYTableView::tableViewSelectionIsChanging()
{
    if (m_isFollowingSelection) {
        return;
    }
    BYGlobals::setPreviouslySelectedClippingRow(BYGlobals::selectedClippingRowForEditing());
    askAboutUnsavedText();
}

void BYTableView::askAboutUnsavedText()
{
    const Phrase entry = entryAt(BYGlobals::selectedClippingRowForEditing());
    if (!entry || !m_editSession->isDirty()) {
        return;
    }
    const RowHold hold(m_listener);
    const bool isToBeSaved = m_editSession->confirmSave(entry.phrase());
    if (const Phrase edited = isToBeSaved ? m_listener.upToDateEntry(entry) : Phrase()) {
        m_editSession->saveAfterQuestion(edited);
        Changes::saveDocument({NotificationName::preferencesChanged});
    }
}

void BYTableView::willUnselect()
{
    if (m_editSession->isDirty()) {
        askAboutUnsavedText();
        // A host may show the pane again: then it shows what is stored.
        loadEditPane(selectedRow());
    }
}

void BYTableView::tableViewSelectionDidChange()
{
    if (m_isFollowingSelection) {
        return;
    }
    const int row = selectedRow();
    BYGlobals::setSelectedClippingRowForEditing(row);
    loadEditPane(row);
}

void BYTableView::loadEditPane(int row)
{
    if (removeAbb) {
        removeAbb->setEnabled(row != -1);
    }
    m_editSession->load(row);
}

void BYTableView::editEntryPaneTextDidChange()
{
    m_editSession->setDirty(true);
}

void BYTableView::editEntryPaneTypingAttributesChanged()
{
    m_editSession->typingAttributesDidChange();
}
