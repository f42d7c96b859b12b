#include "SoundEventsController.h"

#include "EventEntries.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QStandardPaths>

#include <BYGlobals.h>
#include <FileTypes.h>
#include <Pasteboard.h>
#include <SharedNames.h>
#include <Sound.h>
#include <SoundDocument.h>
#include <SoundDrop.h>
#include <SoundKinds.h>
#include <SoundPanel.h>
#include <TableView.h>

using namespace Qt::StringLiterals;
using PropertyList::Dictionary;
using PropertyList::DictionaryPointer;

namespace {

/// 'SFIL' or 'sfil': the pane cannot preview a suitcase without holding up the panel, the helper can.
bool isSuitcase(const QString& path)
{
    constexpr FileTypes::TypeCode capitals = FileTypes::typeCode("SFIL");
    constexpr FileTypes::TypeCode smallLetters = FileTypes::typeCode("sfil");
    const std::optional<FileTypes::TypeCode> type = FileTypes::hfsTypeCode(path);
    return type && (*type == capitals || *type == smallLetters);
}

void addFolder(QComboBox* popUp, const QString& title, const QString& path)
{
    if (popUp->findData(path, Qt::ToolTipRole) < 0) {
        popUp->addItem(title);
        popUp->setItemData(popUp->count() - 1, path, Qt::ToolTipRole);
    }
}

} // namespace

void SoundEventsController::trashButtonAction(QObject* /*sender*/)
{
    handleAssignSoundDialog_row(this, mySoundEventsTable->selectedRow());
}

void SoundEventsController::handleAssignSoundDialog_row(QObject* /*sender*/, int row)
{
    const DictionaryPointer entry = EventEntries::entryAt(BYGlobals::soundsPrefsArrayFiltered(), row);
    if (!entry) {
        return;
    }
    const PropertyList::Value* path = entry->find(EventKey::soundFilepath);
    if (path == nullptr || path->type() != PropertyList::Type::String || !path->stringView().isEmpty()) {
        entry->insert(EventKey::soundFilepath, u""_s);
        SoundDocument::saveAndRefreshMenu();
        mySoundEventsTable->reloadData();
        return;
    }
    OpenPanel panel(mySoundEventsTable);
    prepareOpenPanel(&panel);
    myOpenPanelViewChosenEventLabel->setText(entry->value(EventKey::eventName).textValue());
    panel.setSelectionDidChange([this] { panelSelectionDidChange(nullptr); });
    const QStringList chosen = SoundPanel::run(panel);
    _activeOpenPanel = nullptr;
    stopSelectedSound(this);
    // The helper may have had the document loaded anew while the panel was open.
    const DictionaryPointer present = EventEntries::present(BYGlobals::soundsPrefsArray(), entry);
    if (present && !chosen.isEmpty()) {
        present->insert(EventKey::soundFilepath, chosen.constFirst());
        SoundDocument::saveAndRefreshMenu();
    }
    mySoundEventsTable->viewport()->update();
}

bool SoundEventsController::prepareOpenPanel(OpenPanel* panel)
{
    _activeOpenPanel = panel;
    SoundPanel::prepare(
        *panel, accessory(), this, [this] { playSelectedSound(myPlayButton); },
        [this] { stopSelectedSound(myStopButton); });
    return true;
}

SoundPanelAccessory SoundEventsController::accessory() const
{
    return {myOpenPanelView, myPlayButton, myStopButton, myAddToFavouritesButton};
}

void SoundEventsController::panelSelectionDidChange(QObject* /*sender*/)
{
    if (_activeOpenPanel != nullptr) {
        SoundPanel::selectionDidChange(*_activeOpenPanel, accessory());
    }
}

bool SoundEventsController::folderExists(const QString& path) const
{
    return SoundKinds::folderExists(path);
}

QString SoundEventsController::selectedPath() const
{
    return _activeOpenPanel != nullptr ? _activeOpenPanel->filenames().value(0) : QString();
}

/// The favourites begin with the folders where this desktop keeps sounds.
void SoundEventsController::addDesktopSoundFolders()
{
    const QStringList dataFolders = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    for (const QString& folder : dataFolders) {
        const QString sounds = folder + u"/sounds"_s;
        if (folderExists(sounds)) {
            addFolder(myFavouriteFoldersPopUpButton, sounds, sounds);
        }
    }
    const QString music = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    if (folderExists(music)) {
        addFolder(myFavouriteFoldersPopUpButton, music, music);
    }
}

void SoundEventsController::goToFavouriteDirectory(QComboBox* sender)
{
    const QString folder = sender->currentData(Qt::ToolTipRole).toString();
    if (_activeOpenPanel != nullptr && !folder.isEmpty()) {
        _activeOpenPanel->setDirectory(folder);
    }
}

void SoundEventsController::addToFavouriteDirectory(QObject* /*sender*/)
{
    const QString path = selectedPath();
    if (!path.isEmpty()) {
        addFolder(myFavouriteFoldersPopUpButton, path, path);
    }
}

void SoundEventsController::playSelectedSound(QObject* /*sender*/)
{
    const QString path = selectedPath();
    if (path.isEmpty()) {
        return;
    }
    if (isSuitcase(path)) {
        const DictionaryPointer userInfo = Dictionary::create();
        userInfo->insert(u"filepath"_s, path);
        BYGlobals::sendNotification(NotificationName::playSuitcase, userInfo);
        return;
    }
    stopSelectedSound(this);
    theSoundToPlay = Sound::soundWithContentsOfFile(path);
    if (!theSoundToPlay) {
        return;
    }
    // Queued: the sound is not destroyed while it is still telling that it has ended.
    connect(
        theSoundToPlay.get(), &Sound::finished, this,
        [this, sound = theSoundToPlay.get()](bool finished) { sound_didFinishPlaying(sound, finished); },
        Qt::QueuedConnection);
    theSoundToPlay->play();
    myStopButton->setEnabled(true);
}

void SoundEventsController::stopSelectedSound(QObject* /*sender*/)
{
    if (!theSoundToPlay) {
        return;
    }
    theSoundToPlay->stop();
    theSoundToPlay.reset();
    myStopButton->setEnabled(false);
}

void SoundEventsController::sound_didFinishPlaying(Sound* sound, bool /*finished*/)
{
    if (sound != theSoundToPlay.get()) {
        return;
    }
    myStopButton->setEnabled(false);
    theSoundToPlay.reset();
}

bool SoundEventsController::tableView_writeRowsWithIndexes_toPasteboard(
    TableView* /*table*/, const QList<int>& rows, Pasteboard& pasteboard)
{
    return SoundDrop::writeRows(rows, pasteboard);
}

DragOperation SoundEventsController::tableView_validateDrop_proposedRow_proposedDropOperation(
    TableView* table, const DraggingInfo& info, int row, DropOperation /*operation*/)
{
    return SoundDrop::validate(table, info, row);
}

bool SoundEventsController::tableView_acceptDrop_row_dropOperation(
    TableView* /*table*/, const DraggingInfo& info, int row, DropOperation /*operation*/)
{
    const std::optional<QString> path = info.draggingPasteboard().filename();
    const DictionaryPointer shown = EventEntries::entryAt(BYGlobals::soundsPrefsArrayFiltered(), std::max(row, 0));
    const DictionaryPointer entry = EventEntries::firstWithEventOf(BYGlobals::soundsPrefsArray(), shown);
    if (!path || !entry) {
        return false;
    }
    entry->insert(EventKey::soundFilepath, *path);
    SoundDocument::saveAndRefreshMenu();
    if (BYGlobals::retrieveFromUserDefaults(SettingKey::playSoundOnDrop).integerValue() != 0) {
        BYGlobals::playSoundForEvent(entry->value(EventKey::event).intValue());
    }
    mySoundEventsTable->viewport()->update();
    return true;
}
