// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class OpenPanel;
class QAbstractButton;
class QComboBox;
class QLabel;
class QWidget;
class Sound;

/// What choosing a sound in a panel has in common for phrases and events: the panel with its accessory view, the
/// preview and the favourite folders.
///
/// Each table has a chooser of its own, and both use the same controls: what is done with them reaches the chooser
/// whose panel is up, and does nothing in the other.
class SoundChooser final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SoundChooser)

public:
    /// The accessory view. It belongs to the interface; a control that is null is left out.
    struct Controls
    {
        QWidget* view = nullptr;
        /// Shows the phrase or the event that the sound is for.
        QLabel* chosenFor = nullptr;
        QAbstractButton* play = nullptr;
        QAbstractButton* stop = nullptr;
        QAbstractButton* addToFavourites = nullptr;
        /// Each item's tool tip is the absolute path of a folder.
        QComboBox* favourites = nullptr;
    };

    /// What follows from the panel's selection, the buttons Play and Stop, and the end of a preview's sound.
    struct Actions
    {
        std::function<void()> selectionDidChange;
        std::function<void()> play;
        std::function<void()> stop;
        std::function<void(Sound* sound, bool playedToTheEnd)> soundDidFinish;
    };

    explicit SoundChooser(QObject* parent = nullptr);
    ~SoundChooser() override;

    /// Makes @p panel the one that everything below is about, until it has run: gives it the accessory view, with all
    /// three buttons disabled, and makes @p actions those of the controls, in place of the other table's.
    void prepare(OpenPanel& panel, const Controls& controls, const Actions& actions);
    /// Runs the panel from the root folder for one sound, a file or a folder, to be that of the phrase or event @p
    /// name. Ends the preview. The path chosen; nothing when the user cancels.
    std::optional<QString> run(const QString& name);

    /// The first path selected in the panel; an empty string when none is, or no panel is up.
    QString selectedPath() const;
    /// Enables Play for a file, "add to favourites" for a folder. With nothing selected nothing changes.
    void selectionDidChange(bool isFolder);

    /// Shows the folder of the selected favourite in the panel.
    void goToFavourite();
    /// Adds the selected path to the favourites, for as long as the pane lives. A folder stands among them once.
    void addToFavourites();

    /// A preview has begun: enables Stop. @p sound is what is heard, null where that cannot be stopped.
    void previewDidStart(std::shared_ptr<Sound> sound);
    /// Silences all that the preview has started, and disables Stop.
    void stopPreview();
    /// One of the preview's sounds has ended by itself: with the last one Stop is disabled.
    void previewDidFinish(const Sound* sound);

private:
    void addFavourite(const QString& path);
    void addDesktopSoundFolders();

    OpenPanel* m_activePanel = nullptr;
    Controls m_controls;
    Actions m_actions;
    /// What the preview has started and not told the end of: phrases sound together.
    std::vector<std::shared_ptr<Sound>> m_previews;
};
