// SPDX-License-Identifier: MIT
#pragma once

#include "FileExistence.h"
#include "HelperListener.h"
#include "TypeAhead.h"

#include <core/Phrase.h>
#include <platform/table/TableView.h>
#include <sounds/SoundChooser.h>

#include <QIcon>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

class DocumentCommands;
class EditSession;
class Matrix;
class OpenPanel;
class PrintClippingsWindow;
class QCheckBox;
class QComboBox;
class QLabel;
class QPrintPreviewWidget;
class QPushButton;
class Slider;
class Sound;
class TextView;

/// The phrase list: a table that shows one row per phrase entry of the document, and the façade that has the given
/// names. The document commands, the text in the edit pane, the helper's notifications and the choice of a sound are
/// objects of their own, which it connects; it also keeps most of the pane's controls in step with the
/// settings.
///
/// Row and index in BYGlobals::clippingsArray() are the same number. A row whose entry is no dictionary shows empty
/// cells and cannot be changed. Outlets belong to the interface file; one that is null is left out. Main thread only.
class BYTableView final : public TableView
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(BYTableView)

public:
    explicit BYTableView(QWidget* parent = nullptr);
    ~BYTableView() override;

    /// @name Outlets, connected by the interface file, and state
    /// @{
    QString appID;
    QPushButton* removeAbb = nullptr;
    QPushButton* saveEditedAbbButton = nullptr;
    Matrix* plainOrRichRadioButton = nullptr;
    TextView* editEntryPane = nullptr;
    QLabel* numClippings = nullptr;
    QComboBox* defaultClippingsFileNSPopUpButton = nullptr;
    Slider* myVolumeSlider = nullptr;
    QLabel* myVolumeSliderLabel = nullptr;
    Matrix* menuPrefsMatrix = nullptr;
    Matrix* sortPrefsMatrix = nullptr;
    Matrix* iTunesAnnouncerPrefMatrix = nullptr;
    Matrix* onOffRadioButton = nullptr;
    QWidget* dateTimePopUpButton = nullptr;
    QWidget* textFormattingPopUpButton = nullptr;
    QCheckBox* playSoundOnDropPrefButton = nullptr;
    TableView* mySoundEventsTable = nullptr;
    QWidget* myOpenPanelView = nullptr;
    QLabel* myOpenPanelViewChosenEventLabel = nullptr;
    QPushButton* myAddToFavouritesButton = nullptr;
    QPushButton* myPlayButton = nullptr;
    QPushButton* myStopButton = nullptr;
    QComboBox* myFavouriteFoldersPopUpButton = nullptr;
    PrintClippingsWindow* printClippingsWindow = nullptr;

    /// Connected by the interface file for other controllers' sake; the table does not use them.
    int selectedClippingRowForEditing = 0;
    QObject* myGlobals = nullptr;
    Matrix* expPrefsMatrix = nullptr;
    Matrix* triggersPrefsMatrix = nullptr;
    QPrintPreviewWidget* printClippingsTextView = nullptr;
    QPushButton* printClippingsPrintButton = nullptr;
    QPushButton* printClippingsCancelButton = nullptr;
    /// @}

    /// The text of the selected phrase is edited in @p session, which outlives the table's use. Without one it is not
    /// shown.
    void setEditSession(EditSession& session);

    /// One-time set-up, once the outlets are connected. Does not rely on another controller's having run.
    void awakeFromNib();

    /// @name Display
    /// @{
    int numberOfRowsInTableView(TableView* table);
    QVariant tableView_objectValueForTableColumn_row(TableView* table, const QString& column, int row);
    QString tableView_toolTipForTableColumn_row(TableView* table, const QString& column, int row);
    QString tableView_accessibleTextForTableColumn_row(TableView* table, const QString& column, int row);
    /// Whether the phrase of @p row has a sound whose file is gone.
    bool isSoundMissing(int row);
    /// The desktop's icon of the application at @p path.
    QIcon iconForApplication(const QString& path) const;
    /// @}

    /// @name Cell editing
    /// @{
    void tableView_setObjectValue_forTableColumn_row(
        TableView* table, const QVariant& value, const QString& column, int row);
    bool textShouldBeginEditing(QWidget* fieldEditor) override;
    void textDidEndEditing(QWidget* fieldEditor) override;
    /// @}

    /// @name Refresh from the settings and the helper
    /// @{

    /// Reloads the document and sets the preference controls from the settings.
    void updateSettingsFromPrefs();
    /// Rebuilds the documents pop-up from the recent documents; those whose files have gone are forgotten.
    void updateClippingsPopUpButton();
    /// Shows the document's general volume.
    void updateVolumeSlider();
    /// Selects and shows the first phrase that is exactly @p phrase; nothing changes when there is none.
    void scrollToAbb(const QString& phrase);
    /// Answers a notification with the helper's object, this pane's own included.
    void prefsChanged(const DistributedNotification& notification);
    /// @}

    /// @name Rows
    /// @{

    /// Appends a new phrase. The table shows it when the notification that this posts comes back.
    void addRow(QObject* sender);
    /// Removes the selected phrase, after asking unless gConfirmRemove was cleared.
    void removeRow(QObject* sender);
    /// Sorts by what the header shows.
    void tableView_sortDescriptorsDidChange(TableView* table);
    /// @}

    /// @name Keyboard
    /// @{
    void keyDown(QKeyEvent* event) override;
    bool performKeyEquivalent(QKeyEvent* event) override;
    /// @}

    /// @name Selection and the edit pane
    /// @{

    /// The selection is about to move: asks what becomes of text that is not saved.
    void tableViewSelectionIsChanging();
    /// The selection has moved: loads the edit pane.
    void tableViewSelectionDidChange();
    void editEntryPaneTextDidChange();
    void editEntryPaneTypingAttributesChanged();
    /// The pane is about to go: asks what becomes of text that is not saved.
    void willUnselect();
    /// @}

    /// @name Sounds
    /// @{

    /// Assigns or clears the selected phrase's sound.
    void trashButtonAction(QObject* sender);
    /// Clears the sound of @p row, or lets the user choose one when it has none.
    void handleAssignSoundDialog_row(QObject* sender, int row);
    bool prepareOpenPanel(OpenPanel* panel);
    void panelSelectionDidChange(QObject* sender);
    bool folderExists(const QString& path) const;
    /// These two are sent to both tables, and heard by the one whose panel is up.
    void goToFavouriteDirectory(QComboBox* sender);
    void addToFavouriteDirectory(QObject* sender);
    void playSelectedSound2(QObject* sender);
    void stopSelectedSound(QObject* sender);
    void sound_didFinishPlaying(Sound* sound, bool finished);
    /// @}

    /// @name Drag and drop
    /// @{
    bool tableView_writeRowsWithIndexes_toPasteboard(TableView* table, const QList<int>& rows, Pasteboard& pasteboard);
    /// What a drag of rows offers outside (@p local false) or inside this program.
    Qt::DropActions draggingSourceOperationMaskForLocal(bool local) const;
    Qt::DropAction tableView_validateDrop_proposedRow_proposedDropOperation(
        TableView* table, const Pasteboard& info, int row, DropOperation operation);
    bool tableView_acceptDrop_row_dropOperation(
        TableView* table, const Pasteboard& info, int row, DropOperation operation);
    /// @}

    /// @name Documents
    /// @{

    /// Carries out the item that the user has chosen from the documents pop-up.
    void openDoc(QObject* sender);
    /// Makes the document at @p path the one in use, as choosing it from the pop-up does.
    void useDocument(const QString& path);
    void showPrintClippingsWindow(QObject* sender);
    /// @}

private:
    using RowHold = HelperListener::RowHold;

    void observeNotifications();
    void loadIcons();
    void makeDocumentCommands();

    Phrase entryAt(int row) const;
    bool isMissing(const QString& soundPath);
    void storeText(const Phrase& entry, const QString& key, const QString& text);
    void playOrReveal(const QString& columnIdentifier, const Phrase& entry);
    void setOrClearApplication(const Phrase& entry);
    void chooseApplication(const Phrase& entry);
    void askToClearApplication(const Phrase& entry);

    void editNewRow();

    bool confirmRemoval();
    void reloadDocument(const std::function<void()>& load);
    void reloadFollowingSelection(const std::function<void()>& change);
    void reloadInPreferredOrder(const std::function<void()>& change);
    bool selectPhraseStartingWithTypedKeys();
    void copySound();
    void pasteSound();

    void askAboutUnsavedText();
    void loadEditPane(int row);

    void chooseSound(const Phrase& entry);

    QIcon genericAppIcon;
    QIcon revealIcon;
    QIcon playIcon;
    QIcon trashIcon;
    QIcon addIcon;
    QString attachChar;
    TypeAhead m_typeAhead;
    FileExistence m_fileExistence;
    SoundChooser m_soundChooser;
    /// Made by the set-up.
    std::unique_ptr<DocumentCommands> m_documents;
    HelperListener m_listener;
    EditSession* m_editSession;
    /// That of the cell being edited.
    std::optional<RowHold> m_editingHold;
    /// The table follows a phrase to its new row: it is no other phrase, so there is nothing to ask or to load.
    bool m_isFollowingSelection = false;
};
