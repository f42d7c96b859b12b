// SPDX-License-Identifier: MIT
#include "BYTableView.h"

#include <core/BYGlobals.h>
#include <core/Phrase.h>
#include <core/PhraseList.h>
#include <platform/keyboard/KeyCharacters.h>
#include <sounds/RowButtons.h>
#include <sounds/SoundPasteboard.h>

#include <QKeyEvent>

#include <chrono>

using namespace Qt::StringLiterals;

namespace {

constexpr QChar enterCharacter(0x03);
constexpr QChar deleteCharacter(0x7F);
constexpr int phraseColumn = 1;

double secondsNow()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

} // namespace

void BYTableView::keyDown(QKeyEvent* event)
{
    const QString characters = keyCharacters(*event);
    if (characters.isEmpty()) {
        TableView::keyDown(event);
        return;
    }
    if (characters.front() == enterCharacter) {
        editColumn_row_withEvent_select(phraseColumn, selectedRow(), event, true);
    }
    m_typeAhead.beginRunIfOver(secondsNow());
    if (characters.front() == deleteCharacter) {
        removeRow(this);
        return;
    }
    m_typeAhead.abbFrag += characters;
    if (!selectPhraseStartingWithTypedKeys()) {
        TableView::keyDown(event);
    }
}

bool BYTableView::selectPhraseStartingWithTypedKeys()
{
    const int row = PhraseList::rowOfPhraseStartingWith(BYGlobals::clippingsArray(), m_typeAhead.abbFrag);
    if (row < 0) {
        return false;
    }
    selectRow_byExtendingSelection(row, false);
    scrollRowToVisible(row);
    return true;
}

bool BYTableView::performKeyEquivalent(QKeyEvent* event)
{
    const QString characters = keyCharacters(*event);
    if (characters.isEmpty()) {
        return false;
    }
    const QChar character = characters.front();
    if (character == u'a') {
        clickButton(RowButtons::trashColumn);
    } else if (character == deleteCharacter) {
        gConfirmRemove = false;
        removeRow(this);
    } else if (character == u'c') {
        copySound();
    } else if (character == u'v') {
        pasteSound();
    } else {
        return false;
    }
    return true;
}

void BYTableView::copySound()
{
    const Phrase entry = entryAt(selectedRow());
    if (entry && entry->contains(PhraseKey::soundFilepath)) {
        SoundPasteboard::copy(entry.soundFilepath());
    }
}

void BYTableView::pasteSound()
{
    const Phrase entry = entryAt(selectedRow());
    const std::optional<QString> path = SoundPasteboard::paste();
    if (!entry || !path) {
        return;
    }
    entry.setSoundFilepath(*path);
    Changes::saveDocument();
    reloadData();
}
