// SPDX-License-Identifier: MIT
#include "SoundEventsController.h"

#include "EventEntries.h"

#include <core/BYGlobals.h>
#include <core/SoundEvent.h>
#include <platform/classic/FileTypes.h>
#include <platform/controls/Pasteboard.h>
#include <platform/panels/OpenPanel.h>
#include <platform/sound/Sound.h>
#include <platform/table/TableView.h>
#include <sounds/SoundDrop.h>
#include <sounds/SoundKinds.h>

#include <QPushButton>

using namespace Qt::StringLiterals;
using PropertyList::Dictionary;

namespace {

/// 'SFIL' or 'sfil': the pane cannot preview a suitcase without holding up the panel, the helper can.
bool isSuitcase(const QString& path)
{
    constexpr quint32 capitals = fourCharCode("SFIL");
    constexpr quint32 smallLetters = fourCharCode("sfil");
    const std::optional<quint32> type = FileTypes::hfsTypeCode(path);
    return type && (*type == capitals || *type == smallLetters);
}

} // namespace

void SoundEventsController::trashButtonAction(QObject* /*sender*/)
{
    handleAssignSoundDialog_row(this, selectedRow());
}

void SoundEventsController::handleAssignSoundDialog_row(QObject* /*sender*/, int row)
{
    const SoundEvent event = EventEntries::shownAt(row);
    if (!event) {
        return;
    }
    if (event.hasSound()) {
        event.setSoundFilepath({});
        Changes::saveDocument();
        reloadTable();
        return;
    }
    OpenPanel panel(mySoundEventsTable);
    prepareOpenPanel(&panel);
    const std::optional<QString> chosen = m_soundChooser.run(event.name());
    // The helper may have had the document loaded anew while the panel was open.
    const SoundEvent present = EventEntries::present(BYGlobals::soundsPrefsArray(), event);
    if (present && chosen) {
        present.setSoundFilepath(*chosen);
        Changes::saveDocument();
    }
    reloadTable();
}

bool SoundEventsController::prepareOpenPanel(OpenPanel* panel)
{
    m_soundChooser.prepare(*panel,
        {myOpenPanelView, myOpenPanelViewChosenEventLabel, myPlayButton, myStopButton, myAddToFavouritesButton,
            myFavouriteFoldersPopUpButton},
        {[this] { panelSelectionDidChange(this); }, [this] { playSelectedSound(this); },
            [this] { stopSelectedSound(this); },
            [this](Sound* sound, bool finished) { sound_didFinishPlaying(sound, finished); }});
    return true;
}

void SoundEventsController::panelSelectionDidChange(QObject* /*sender*/)
{
    m_soundChooser.selectionDidChange(folderExists(m_soundChooser.selectedPath()));
}

bool SoundEventsController::folderExists(const QString& path) const
{
    return SoundKinds::folderExists(path);
}

void SoundEventsController::goToFavouriteDirectory(QComboBox* /*sender*/)
{
    m_soundChooser.goToFavourite();
}

void SoundEventsController::addToFavouriteDirectory(QObject* /*sender*/)
{
    m_soundChooser.addToFavourites();
}

void SoundEventsController::playSelectedSound(QObject* /*sender*/)
{
    const QString path = m_soundChooser.selectedPath();
    if (path.isEmpty()) {
        return;
    }
    if (isSuitcase(path)) {
        const PropertyList::DictionaryPointer userInfo = Dictionary::create();
        userInfo->insert(u"filepath"_s, path);
        Changes::tell(NotificationName::playSuitcase, userInfo);
        return;
    }
    stopSelectedSound(this);
    if (std::shared_ptr<Sound> sound = Sound::soundWithContentsOfFile(path)) {
        sound->play();
        m_soundChooser.previewDidStart(std::move(sound));
    }
}

void SoundEventsController::stopSelectedSound(QObject* /*sender*/)
{
    m_soundChooser.stopPreview();
}

void SoundEventsController::sound_didFinishPlaying(Sound* sound, bool /*finished*/)
{
    m_soundChooser.previewDidFinish(sound);
}

bool SoundEventsController::tableView_writeRowsWithIndexes_toPasteboard(
    TableView* /*table*/, const QList<int>& rows, Pasteboard& pasteboard)
{
    return SoundDrop::writeRows(rows, pasteboard);
}

Qt::DropAction SoundEventsController::tableView_validateDrop_proposedRow_proposedDropOperation(
    TableView* table, const Pasteboard& info, int row, DropOperation /*operation*/)
{
    return SoundDrop::validate(table, info, row);
}

bool SoundEventsController::tableView_acceptDrop_row_dropOperation(
    TableView* /*table*/, const Pasteboard& info, int row, DropOperation /*operation*/)
{
    const std::optional<QString> path = info.filename();
    const SoundEvent event =
        EventEntries::firstWithEventOf(BYGlobals::soundsPrefsArray(), EventEntries::shownAt(std::max(row, 0)));
    if (!path || !event) {
        return false;
    }
    event.setSoundFilepath(*path);
    Changes::saveDocument();
    if (Settings::playSoundOnDrop.value()) {
        BYGlobals::playSoundForEvent(event.code());
    }
    reloadTable();
    return true;
}
