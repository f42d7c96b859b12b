// SPDX-License-Identifier: MIT
#include "BYEventsTableView.h"

#include "EventEntries.h"

#include <core/BYGlobals.h>
#include <core/SoundEvent.h>
#include <platform/controls/Pasteboard.h>
#include <platform/desktop/Bundle.h>
#include <platform/desktop/Workspace.h>
#include <platform/keyboard/KeyCharacters.h>
#include <sounds/RemovalQuestion.h>
#include <sounds/RowButtons.h>
#include <sounds/SoundPasteboard.h>

#include <QKeyEvent>

using namespace Qt::StringLiterals;
using PropertyList::DictionaryPointer;

namespace {

constexpr char16_t deleteCharacter = 0x7F;
constexpr char16_t leftArrow = 0xF702;
constexpr char16_t rightArrow = 0xF703;

DictionaryPointer selectedEntry(const TableView& table)
{
    return EventEntries::entryAt(BYGlobals::soundsPrefsArrayFiltered(), table.selectedRow());
}

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
    const DictionaryPointer shown = selectedEntry(*this);
    const Bundle bundle = Bundle::bundleWithIdentifier(paneBundleIdentifier);
    const bool confirmed =
        !gConfirmRemove ||
        RemovalQuestion::confirm(this, bundle.localizedString(u"Are you sure you wish to remove this sound?"_s) +
                                           bundle.localizedString(u"\nYou will not be able to undo this operation."_s));
    gConfirmRemove = true;
    const DictionaryPointer entry = EventEntries::firstWithEventOf(BYGlobals::soundsPrefsArray(), shown);
    if (!confirmed || !entry) {
        return;
    }
    SoundEvent(entry).setSoundFilepath({});
    Changes::saveDocument();
    reloadData();
}

void BYEventsTableView::copySound()
{
    if (const DictionaryPointer entry = selectedEntry(*this)) {
        SoundPasteboard::copy(entry->value(EventKey::soundFilepath).string());
    }
}

void BYEventsTableView::pasteSound()
{
    const DictionaryPointer entry = selectedEntry(*this);
    const std::optional<QString> path = SoundPasteboard::paste();
    if (!entry || !path) {
        return;
    }
    SoundEvent(entry).setSoundFilepath(*path);
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
    const DictionaryPointer entry = selectedEntry(*this);
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
        if (entry) {
            Workspace::selectFile(entry->value(EventKey::soundFilepath).string());
        }
        return true;
    case rightArrow:
        if (entry) {
            BYGlobals::playSoundForEvent(entry->value(EventKey::event).intValue());
        }
        return true;
    default:
        return false;
    }
}
