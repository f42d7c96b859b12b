#include "BYTableView.h"

#include <QLabel>
#include <QPushButton>

#include <BYGlobals.h>
#include <OpenPanel.h>
#include <SharedNames.h>
#include <Sound.h>
#include <SoundDocument.h>
#include <SoundKinds.h>
#include <SoundPanel.h>

using namespace Qt::StringLiterals;

using PropertyList::DictionaryPointer;

namespace {

SoundPanelAccessory accessoryOf(const BYTableView& table)
{
    return {table.myOpenPanelView, table.myPlayButton, table.myStopButton, table.myAddToFavouritesButton};
}

} // namespace

void BYTableView::trashButtonAction(QObject*)
{
    if (const int row = selectedRow(); row != -1) {
        handleAssignSoundDialog_row(this, row);
    }
}

void BYTableView::handleAssignSoundDialog_row(QObject*, int row)
{
    const DictionaryPointer entry = entryAt(row);
    if (!entry) {
        return;
    }
    const PropertyList::Value path = entry->value(PhraseKey::soundFilepath);
    if (path.type() == PropertyList::Type::String && path.stringView().isEmpty()) {
        chooseSound(entry);
        return;
    }
    entry->insert(PhraseKey::soundFilepath, u""_s);
    SoundDocument::saveAndRefreshMenu();
    reloadData();
}

void BYTableView::chooseSound(const DictionaryPointer& entry)
{
    const RowHold hold(*this);
    auto panel = std::make_unique<OpenPanel>(window());
    prepareOpenPanel(panel.get());
    _activeOpenPanel = std::move(panel);
    if (myOpenPanelViewChosenEventLabel) {
        myOpenPanelViewChosenEventLabel->setText(entry->value(PhraseKey::phrase).textValue());
    }
    const QStringList paths = SoundPanel::run(*_activeOpenPanel);
    const DictionaryPointer asked = upToDateEntry(entry);
    if (!paths.isEmpty() && asked) {
        asked->insert(PhraseKey::soundFilepath, paths.constFirst());
        SoundDocument::saveAndRefreshMenu();
    }
    viewport()->update();
}

bool BYTableView::prepareOpenPanel(OpenPanel* panel)
{
    panel->setSelectionDidChange([this] { panelSelectionDidChange(this); });
    SoundPanel::prepare(
        *panel, accessoryOf(*this), this, [this] { playSelectedSound2(this); }, [this] { stopSelectedSound(this); });
    return true;
}

void BYTableView::panelSelectionDidChange(QObject*)
{
    if (_activeOpenPanel) {
        SoundPanel::selectionDidChange(*_activeOpenPanel, accessoryOf(*this));
    }
}

bool BYTableView::folderExists(const QString& path) const
{
    return SoundKinds::folderExists(path);
}

void BYTableView::playSelectedSound2(QObject*)
{
    const QStringList paths = _activeOpenPanel ? _activeOpenPanel->filenames() : QStringList();
    if (paths.isEmpty()) {
        return;
    }
    if (theSoundToPlay) {
        theSoundToPlay->stop();
    }
    theSoundToPlay = Sound::soundWithContentsOfFile(paths.constFirst());
    BYGlobals::playSoundForPhrase(paths.constFirst());
    if (myStopButton) {
        myStopButton->setEnabled(true);
    }
}

// What is heard is the sound in the slot that phrases share: stopping it is what makes the preview fall silent.
void BYTableView::stopSelectedSound(QObject*)
{
    BYGlobals::stopSoundForPhrase();
    sound_didFinishPlaying(theSoundToPlay.get(), false);
}

void BYTableView::sound_didFinishPlaying(Sound*, bool)
{
    theSoundToPlay.reset();
    if (myStopButton) {
        myStopButton->setEnabled(false);
    }
}
