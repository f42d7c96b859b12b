// SPDX-License-Identifier: MIT
#include "BYTableView.h"

#include <core/BYGlobals.h>
#include <core/Phrase.h>
#include <platform/panels/OpenPanel.h>
#include <sounds/SoundKinds.h>

#include <QPushButton>

using namespace Qt::StringLiterals;

void BYTableView::trashButtonAction(QObject*)
{
    if (const int row = selectedRow(); row != -1) {
        handleAssignSoundDialog_row(this, row);
    }
}

void BYTableView::handleAssignSoundDialog_row(QObject*, int row)
{
    const Phrase entry = entryAt(row);
    if (!entry) {
        return;
    }
    if (!entry.hasSound()) {
        chooseSound(entry);
        return;
    }
    entry.setSoundFilepath({});
    Changes::saveDocument();
    reloadData();
}

void BYTableView::chooseSound(const Phrase& entry)
{
    const RowHold hold(m_listener);
    OpenPanel panel(window());
    prepareOpenPanel(&panel);
    const std::optional<QString> path = m_soundChooser.run(entry.phrase());
    const Phrase asked = m_listener.upToDateEntry(entry);
    if (path && asked) {
        asked.setSoundFilepath(*path);
        Changes::saveDocument();
    }
    viewport()->update();
}

bool BYTableView::prepareOpenPanel(OpenPanel* panel)
{
    m_soundChooser.prepare(*panel,
        {myOpenPanelView, myOpenPanelViewChosenEventLabel, myPlayButton, myStopButton, myAddToFavouritesButton,
            myFavouriteFoldersPopUpButton},
        {[this] { panelSelectionDidChange(this); }, [this] { playSelectedSound2(this); },
            [this] { stopSelectedSound(this); },
            [this](Sound* sound, bool finished) { sound_didFinishPlaying(sound, finished); }});
    return true;
}

void BYTableView::panelSelectionDidChange(QObject*)
{
    m_soundChooser.selectionDidChange(folderExists(m_soundChooser.selectedPath()));
}

bool BYTableView::folderExists(const QString& path) const
{
    return SoundKinds::folderExists(path);
}

void BYTableView::goToFavouriteDirectory(QComboBox*)
{
    m_soundChooser.goToFavourite();
}

void BYTableView::addToFavouriteDirectory(QObject*)
{
    m_soundChooser.addToFavourites();
}

// Files previewed one after another sound together, as phrases do, until Stop ends them all. Stop is enabled even by a
// suitcase, which is over by then. Both are meant.
void BYTableView::playSelectedSound2(QObject*)
{
    if (const QString path = m_soundChooser.selectedPath(); !path.isEmpty()) {
        m_soundChooser.previewDidStart(BYGlobals::playSoundForPhrase(path));
    }
}

void BYTableView::stopSelectedSound(QObject*)
{
    m_soundChooser.stopPreview();
}

void BYTableView::sound_didFinishPlaying(Sound* sound, bool)
{
    m_soundChooser.previewDidFinish(sound);
}
