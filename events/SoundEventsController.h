// SPDX-License-Identifier: MIT
#pragma once

#include <sounds/SoundChooser.h>

#include <QObject>

class OpenPanel;
class Pasteboard;
class QComboBox;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class Slider;
class Sound;
class TableView;
enum class DropOperation;

/// Controller of the sound-events list: shows the document's events, narrows them by the search field, gives them
/// sounds and volumes. Row r of the table is entry r of the filtered event list. Main thread only.
class SoundEventsController final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SoundEventsController)

public:
    explicit SoundEventsController(QObject* parent = nullptr);
    ~SoundEventsController() override;

    /// @name Outlets, connected by the interface; one that is null is left out
    /// @{
    QLineEdit* mySearchField = nullptr;
    TableView* mySoundEventsTable = nullptr;
    QMenu* myVolumePopUp = nullptr;
    Slider* myVolumeSlider = nullptr;
    QLabel* myVolumeSliderLabel = nullptr;
    QWidget* myOpenPanelView = nullptr;
    QLabel* myOpenPanelViewChosenEventLabel = nullptr;
    QPushButton* myAddToFavouritesButton = nullptr;
    QPushButton* myPlayButton = nullptr;
    QPushButton* myStopButton = nullptr;
    /// Each item's tool tip is the absolute path of a folder.
    QComboBox* myFavouriteFoldersPopUpButton = nullptr;
    /// @}

    /// One-time set-up, when all outlets are connected.
    void awakeFromNib();

    /// Narrows the list to the search text and reloads the table. Also the action of the pop-up column's menu.
    void volumePopUpAction(QObject* sender);

    /// @name The table's data
    /// @{
    int numberOfRowsInTableView(TableView* table);
    QVariant tableView_objectValueForTableColumn_row(TableView* table, const QString& column, int row);
    void tableView_setObjectValue_forTableColumn_row(
        TableView* table, const QVariant& value, const QString& column, int row);
    QString tableView_toolTipForTableColumn_row(TableView* table, const QString& column, int row);
    QString tableView_accessibleTextForTableColumn_row(TableView* table, const QString& column, int row);
    bool tableView_writeRowsWithIndexes_toPasteboard(TableView* table, const QList<int>& rows, Pasteboard& pasteboard);
    Qt::DropAction tableView_validateDrop_proposedRow_proposedDropOperation(
        TableView* table, const Pasteboard& info, int row, DropOperation operation);
    bool tableView_acceptDrop_row_dropOperation(
        TableView* table, const Pasteboard& info, int row, DropOperation operation);
    /// @}

    /// @name Volume
    /// @{

    /// Names and shows the volume that the slider sets now: the general one, the system's alert volume or the selected
    /// event's.
    void tableViewSelectionDidChange();
    /// Stores the slider's value where the selection says, writes the document and has the event played.
    void volumeSliderAction(Slider* sender);
    /// @}

    /// @name Assigning a sound
    /// @{

    /// Toggles the sound of the selected row.
    void trashButtonAction(QObject* sender);
    /// Takes the row's sound away, or, when it has none, runs the panel that chooses one.
    void handleAssignSoundDialog_row(QObject* sender, int row);
    /// Fits the accessory view into the panel; always true.
    bool prepareOpenPanel(OpenPanel* panel);
    void panelSelectionDidChange(QObject* sender);
    bool folderExists(const QString& path) const;
    /// Shows the folder of the pop-up's selected item in the panel. This and the next are sent to both tables, and
    /// heard by the one whose panel is up.
    void goToFavouriteDirectory(QComboBox* sender);
    /// Adds the panel's selected folder to the pop-up, for as long as the pane lives.
    void addToFavouriteDirectory(QObject* sender);
    /// Previews the panel's selected file; a suitcase is played by the helper.
    void playSelectedSound(QObject* sender);
    void stopSelectedSound(QObject* sender);
    void sound_didFinishPlaying(Sound* sound, bool finished);
    /// @}

private:
    void fillVolumePopUp();
    void searchForValue(const QString& key);
    /// -1 when no row is selected.
    int selectedRow() const;
    void reloadTable();

    SoundChooser m_soundChooser;
};
