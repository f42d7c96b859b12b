// SPDX-License-Identifier: MIT
#include "SoundChooser.h"

#include "SoundKinds.h"

#include <platform/desktop/Text.h>
#include <platform/panels/OpenPanel.h>
#include <platform/sound/Sound.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QStandardPaths>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// A button's clicks go to one action, the one set last.
void setAction(QAbstractButton* button, QObject* receiver, const std::function<void()>& action)
{
    if (button) {
        QObject::disconnect(button, &QAbstractButton::clicked, nullptr, nullptr);
        QObject::connect(button, &QAbstractButton::clicked, receiver, action);
    }
}

void setEnabled(QAbstractButton* button, bool enabled)
{
    if (button) {
        button->setEnabled(enabled);
    }
}

} // namespace

SoundChooser::SoundChooser(QObject* parent)
    : QObject(parent)
{
}

SoundChooser::~SoundChooser() = default;

void SoundChooser::prepare(OpenPanel& panel, const Controls& controls, const Actions& actions)
{
    m_activePanel = &panel;
    m_controls = controls;
    m_actions = actions;
    panel.setAccessoryView(controls.view);
    panel.setSelectionDidChange(actions.selectionDidChange);
    setAction(controls.play, this, actions.play);
    setAction(controls.stop, this, actions.stop);
    for (QAbstractButton* button : {controls.play, controls.stop, controls.addToFavourites}) {
        setEnabled(button, false);
    }
    addDesktopSoundFolders();
}

std::optional<QString> SoundChooser::run(const QString& name)
{
    if (m_controls.chosenFor) {
        m_controls.chosenFor->setText(name);
    }
    OpenPanel& panel = *m_activePanel;
    panel.setTitle(Text::tr("Choose a Sound"));
    panel.setAllowsMultipleSelection(false);
    panel.setCanChooseDirectories(true);
    panel.setCanChooseFiles(true);
    const int result = panel.runModalForDirectory_file_types(u"/"_s, {}, SoundKinds::openPanelTypes());
    m_activePanel = nullptr;
    stopPreview();
    const QStringList chosen = panel.filenames();
    return result == okButton && !chosen.isEmpty() ? std::optional(chosen.constFirst()) : std::nullopt;
}

QString SoundChooser::selectedPath() const
{
    return m_activePanel ? m_activePanel->filenames().value(0) : QString();
}

void SoundChooser::selectionDidChange(bool isFolder)
{
    if (!selectedPath().isEmpty()) {
        setEnabled(m_controls.play, !isFolder);
        setEnabled(m_controls.addToFavourites, isFolder);
    }
}

void SoundChooser::goToFavourite()
{
    if (m_activePanel && m_controls.favourites && m_controls.favourites->currentIndex() >= 0) {
        m_activePanel->setDirectory(m_controls.favourites->currentData(Qt::ToolTipRole).toString());
    }
}

void SoundChooser::addToFavourites()
{
    if (const QString path = selectedPath(); !path.isEmpty()) {
        addFavourite(path);
    }
}

void SoundChooser::addFavourite(const QString& path)
{
    QComboBox* const favourites = m_controls.favourites;
    if (favourites && favourites->findData(path, Qt::ToolTipRole) < 0) {
        favourites->addItem(path);
        favourites->setItemData(favourites->count() - 1, path, Qt::ToolTipRole);
    }
}

/// The favourites begin with the folders where this desktop keeps sounds.
void SoundChooser::addDesktopSoundFolders()
{
    QStringList folders;
    for (const QString& data : QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)) {
        folders.append(data + u"/sounds"_s);
    }
    folders.append(QStandardPaths::writableLocation(QStandardPaths::MusicLocation));
    for (const QString& folder : std::as_const(folders)) {
        if (SoundKinds::folderExists(folder)) {
            addFavourite(folder);
        }
    }
}

void SoundChooser::previewDidStart(std::shared_ptr<Sound> sound)
{
    if (sound) {
        // Queued: the sound is not destroyed while it is still telling that it has ended.
        connect(
            sound.get(), &Sound::finished, this,
            [this, heard = sound.get()](bool playedToTheEnd) { m_actions.soundDidFinish(heard, playedToTheEnd); },
            Qt::QueuedConnection);
        m_previews.push_back(std::move(sound));
    }
    setEnabled(m_controls.stop, true);
}

void SoundChooser::stopPreview()
{
    for (const auto& preview : std::exchange(m_previews, {})) {
        preview->stop();
    }
    setEnabled(m_controls.stop, false);
}

void SoundChooser::previewDidFinish(const Sound* sound)
{
    // By now another sound may play at the address of one that is gone.
    const auto hasEnded = [sound](const auto& preview) { return preview.get() == sound && !preview->isPlaying(); };
    if (std::erase_if(m_previews, hasEnded) > 0) {
        setEnabled(m_controls.stop, !m_previews.empty());
    }
}
