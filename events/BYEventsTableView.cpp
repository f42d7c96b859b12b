// SPDX-License-Identifier: MIT
#include "BYEventsTableView.h"

#include "EventEntries.h"

#include <core/BYGlobals.h>
#include <core/SoundEvent.h>
#include <platform/controls/Pasteboard.h>
#include <platform/desktop/Text.h>
#include <platform/desktop/Workspace.h>
#include <platform/keyboard/KeyCharacters.h>
#include <sounds/RemovalQuestion.h>
#include <sounds/RowButtons.h>
#include <sounds/SoundPasteboard.h>

#include <QKeyEvent>

namespace {

constexpr char16_t deleteCharacter = 0x7F;
constexpr char16_t leftArrow = 0xF702;
constexpr char16_t rightArrow = 0xF703;

} // namespace

BYEventsTableView::BYEventsTableView(QWidget* parent)
    : TableView(parent)
{
}

void BYEventsTableView::removeRow(QObject* /*sender*/)
{
    const int row = selectedRow();
    if (row < 0) {
        return;
    }
    const SoundEvent shown = EventEntries::shownAt(row);
    const bool confirmed = !gConfirmRemove || RemovalQuestion::confirm(
                                                  this, Text::tr("Are you sure you wish to remove this sound?") +
                                                            Text::tr("\nYou will not be able to undo this operation."));
    gConfirmRemove = true;
    const SoundEvent event = EventEntries::firstWithEventOf(BYGlobals::soundsPrefsArray(), shown);
    if (!confirmed || !event) {
        return;
    }
    event.setSoundFilepath({});
    Changes::saveDocument();
    reloadData();
}

void BYEventsTableView::copySound()
{
    if (const SoundEvent event = EventEntries::shownAt(selectedRow())) {
        SoundPasteboard::copy(event.soundFilepath());
    }
}

void BYEventsTableView::pasteSound()
{
    const SoundEvent event = EventEntries::shownAt(selectedRow());
    const std::optional<QString> path = SoundPasteboard::paste();
    if (!event || !path) {
        return;
    }
    event.setSoundFilepath(*path);
    Changes::saveDocument();
    reloadData();
}

void BYEventsTableView::keyDown(QKeyEvent* event)
{
    const QString characters = keyCharacters(*event);
    if (!characters.isEmpty() && characters.front() == deleteCharacter) {
        removeRow(this);
        return;
    }
    TableView::keyDown(event);
}

bool BYEventsTableView::performKeyEquivalent(QKeyEvent* event)
{
    const QString characters = keyCharacters(*event);
    if (characters.isEmpty()) {
        return false;
    }
    const SoundEvent selected = EventEntries::shownAt(selectedRow());
    switch (characters.front().unicode()) {
    case u'c':
        copySound();
        return true;
    case u'v':
        pasteSound();
        return true;
    case u'a':
        clickButton(RowButtons::trashColumn);
        return true;
    case deleteCharacter:
        gConfirmRemove = false;
        removeRow(this);
        return true;
    case leftArrow:
        if (selected) {
            Workspace::selectFile(selected.soundFilepath());
        }
        return true;
    case rightArrow:
        if (selected) {
            BYGlobals::playSoundForEvent(selected.code());
        }
        return true;
    default:
        return false;
    }
}
