#pragma once

#include <QStringList>

#include <functional>

class OpenPanel;
class QAbstractButton;
class QObject;
class QWidget;

/// The controls that both tables add to the panel in which a sound is chosen. They belong to the interface.
struct SoundPanelAccessory
{
    QWidget* view = nullptr;
    QAbstractButton* playButton = nullptr;
    QAbstractButton* stopButton = nullptr;
    QAbstractButton* addToFavouritesButton = nullptr;
};

/// What choosing a sound in a panel has in common for phrases and events.
namespace SoundPanel {

/// Gives @p panel the accessory view, with Play and Stop disabled, and makes @p play and @p stop the one action of
/// their buttons, in place of the other table's, for as long as @p receiver lives.
void prepare(OpenPanel& panel, const SoundPanelAccessory& accessory, QObject* receiver, std::function<void()> play,
    std::function<void()> stop);

/// Enables Play for a file, "add to favourites" for a folder, by the first selected path. With nothing selected nothing
/// changes.
void selectionDidChange(const OpenPanel& panel, const SoundPanelAccessory& accessory);

/// Runs @p panel from the root folder for one sound, a file or a folder. The paths chosen; empty when the user cancels.
QStringList run(OpenPanel& panel);

} // namespace SoundPanel
