// SPDX-License-Identifier: MIT
#include "SoundEventsController.h"

#include "EventEntries.h"
#include "EventsModel.h"

#include <core/BYGlobals.h>
#include <core/SoundEvent.h>
#include <platform/bytes/PathNames.h>
#include <platform/desktop/Text.h>
#include <platform/desktop/Workspace.h>
#include <platform/sound/Sound.h>
#include <platform/table/TableView.h>
#include <sounds/RowButtons.h>

#include <QFileInfo>
#include <QLineEdit>

using namespace Qt::StringLiterals;
using RowButtons::playColumn;
using RowButtons::revealColumn;
using RowButtons::trashColumn;

namespace {

QIcon finderIcon;
QIcon playIcon;
QIcon trashIcon;
QIcon addIcon;

void loadIcons()
{
    const RowButtons::Icons icons = RowButtons::loadIcons();
    finderIcon = icons.reveal;
    playIcon = icons.play;
    trashIcon = icons.remove;
    addIcon = icons.add;
}

/// The assigned sound by its file name, or the note that it is not there.
QVariant soundText(const SoundEvent& event)
{
    const QString path = event.soundFilepath();
    if (path.isEmpty()) {
        return {};
    }
    if (!QFileInfo::exists(path)) {
        return Text::tr("cannot find assigned sound!");
    }
    return lastPathComponent(path).toString();
}

} // namespace

SoundEventsController::SoundEventsController(QObject* parent)
    : QObject(parent)
{
}

SoundEventsController::~SoundEventsController() = default;

void SoundEventsController::awakeFromNib()
{
    loadIcons();
    fillVolumePopUp();
    if (mySoundEventsTable == nullptr) {
        return;
    }
    mySoundEventsTable->setModel(new EventsModel(*this));
    connect(
        mySoundEventsTable, &TableView::selectionDidChange, this, &SoundEventsController::tableViewSelectionDidChange);
}

void SoundEventsController::volumePopUpAction(QObject* /*sender*/)
{
    if (mySearchField != nullptr) {
        EventEntries::filter(
            BYGlobals::soundsPrefsArray(), BYGlobals::soundsPrefsArrayFiltered(), mySearchField->text());
    }
    reloadTable();
}

int SoundEventsController::selectedRow() const
{
    return mySoundEventsTable != nullptr ? mySoundEventsTable->selectedRow() : -1;
}

void SoundEventsController::reloadTable()
{
    if (mySoundEventsTable != nullptr) {
        mySoundEventsTable->reloadData();
    }
}

int SoundEventsController::numberOfRowsInTableView(TableView* /*table*/)
{
    const PropertyList::ArrayPointer entries = BYGlobals::soundsPrefsArrayFiltered();
    return entries ? int(entries->size()) : 0;
}

QVariant SoundEventsController::tableView_objectValueForTableColumn_row(
    TableView* /*table*/, const QString& column, int row)
{
    const SoundEvent event = EventEntries::shownAt(row);
    if (!event) {
        return {};
    }
    if (column == revealColumn) {
        return finderIcon;
    }
    if (column == playColumn) {
        return playIcon;
    }
    if (column == trashColumn) {
        return event.hasSound() ? trashIcon : addIcon;
    }
    if (column == EventKey::eventName) {
        return event.name();
    }
    if (column == EventKey::soundFilepath) {
        return soundText(event);
    }
    const PropertyList::Value* value = event->find(column);
    return value != nullptr ? lastPathComponent(value->textValue()).toString() : QVariant();
}

void SoundEventsController::tableView_setObjectValue_forTableColumn_row(
    TableView* /*table*/, const QVariant& /*value*/, const QString& column, int row)
{
    const SoundEvent event = EventEntries::shownAt(row);
    if (!event) {
        return;
    }
    if (column == playColumn) {
        BYGlobals::playSoundForEvent(event.code());
    } else if (column == revealColumn) {
        Workspace::selectFile(event.soundFilepath());
    }
}

QString SoundEventsController::tableView_toolTipForTableColumn_row(TableView* /*table*/, const QString& column, int row)
{
    const SoundEvent event = EventEntries::shownAt(row);
    if (!event) {
        return {};
    }
    return column == EventKey::soundFilepath ? event.soundFilepath() : RowButtons::toolTip(column, event.hasSound());
}

QString SoundEventsController::tableView_accessibleTextForTableColumn_row(
    TableView* table, const QString& column, int row)
{
    return column == EventKey::soundFilepath ? QString() : tableView_toolTipForTableColumn_row(table, column, row);
}
