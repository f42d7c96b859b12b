// SPDX-License-Identifier: MIT
#pragma once

#include <PTHotKeysLib/src/PTHotKey.h>
#include <PTHotKeysLib/src/PTKeyComboPanel.h>

#include <QString>

#include <array>

class Matrix;
class QAbstractButton;
class QGroupBox;
class QLineEdit;
class QPushButton;
class QSpinBox;

/// The controller of the options view: each of its actions writes one option of the helper into the settings, which
/// tells the helper at once. It also records the helper's three hot keys (which the helper itself registers), and opens
/// the help book.
///
/// Actions take the control that sent them and run on the main thread. The interface owns the controls; outlets are set
/// before awakeFromNib() and stay valid as long as the controller; one that is null is left out.
class BYController final : public PTKeyComboPanelTarget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(BYController)

public:
    static constexpr int hotKeyCount = 3;

    explicit BYController(QObject* parent = nullptr);
    ~BYController() override;

    /// @name Outlets
    /// @{
    QLineEdit* idleTalkIntervalText = nullptr;
    QSpinBox* idleTalkIntervalStepper = nullptr;
    QWidget* prefPaneWindow = nullptr;
    QWidget* triggerPref = nullptr;
    QWidget* expansionPref = nullptr;
    /// The fifth character of its title is the place of the helper's arrow glyph.
    QGroupBox* menuPref = nullptr;
    QWidget* sortPref = nullptr;
    /// 4 rows of 7 check boxes. A cell stands for the characters of its title, or by its tag for a fixed one: 20 tab,
    /// 21 space, 22 carriage return, 23 no-break space, 24 escape.
    Matrix* triggersPrefsMatrix = nullptr;
    /// Row 0: on in column 0, off in column 1.
    Matrix* onOffRadioButton = nullptr;
    /// The buttons that show the hot keys; their property "tag" is the hot key's index. An accessible name hides a
    /// button's text, so theirs has one %@ where the combination is put in.
    QPushButton* addHotKeyButton = nullptr;
    QPushButton* editHotKeyButton = nullptr;
    QPushButton* pauseHotKeyButton = nullptr;
    /// @}

    /// Shows the options that the phrase table does not show, and sets the hot keys up. Once, when all outlets are set.
    void awakeFromNib();

    /// @name Options
    /// @{

    /// From the stepper or the text field: writes "IdleTalkIntervalPref" and shows it in the field.
    void enterIdleTalkIntervalPref(QWidget* sender);
    /// Adds the characters of the cell just clicked to the trigger characters, or removes them; writes "TriggersSet"
    /// and "NoTriggers".
    void enterTriggerPref(Matrix* sender);
    /// Turns every trigger cell on; the trigger characters become the default ones and those of all titles.
    void selectAllTriggers(QWidget* sender);
    void deSelectAllTriggers(QWidget* sender);
    /// From a check box, or a matrix of them: writes "1" or "0" (also for the mixed state) under the title of the box
    /// (a box with a translated title has the untranslated one as its property "settingKey").
    void enterExpansionPref(QWidget* sender);
    /// Writes "MenuPref"; into or out of 4 a running helper is restarted, since it heeds that value only when it
    /// starts.
    void enterMenuPref(Matrix* sender);
    void enterTriggerDelimitersPref(Matrix* sender);
    void iTunesAnnouncerPref(Matrix* sender);
    void enterSortPref(Matrix* sender);
    /// Opens the help book that has the localized name of "Blipsy 1.x Help" in the desktop's browser.
    void showHelp(QWidget* sender);
    /// Starts the helper and shows it as on, unless it is running.
    void handleTimer();
    void textDidBeginEditing();

    /// @}
    /// @name Hot keys
    /// @{

    /// Opens the key-combination panel as a sheet for the hot key of the button @p sender. Nothing happens while the
    /// panel is up.
    void hitSetAddHotKey(QPushButton* sender);
    /// On code 1 takes the panel's combination: shows it, stores it and tells the helper.
    void hotKeySheetDidEndWithReturnCode(int returnCode) override;

    /// By index: "Add a Clipping", "Edit Clippings", "Pause/Resume".
    std::array<PTHotKey::Pointer, hotKeyCount> mHotKey;
    std::array<QPushButton*, hotKeyCount> theHotButtons{};
    /// The localized titles, at once the hot keys' identifiers, names and settings keys.
    std::array<QString, hotKeyCount> theHotKeysNames;
    /// Index of the hot key whose panel was opened last.
    qint32 tag = 0;

    /// @}

    /// Brings the tool tip of a hot key's button up to date when it is about to be shown: the helper, which reserves
    /// the keys, may have been refused them in the meantime.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showIdleTalkInterval();
    void showArrow();
    void setUpHotKeys();
    void showCombination(size_t index);
    void showToolTip(size_t index);
    void restartHelper();
    /// Whether a check box or radio button is on; the mixed state of a check box counts as off.
    static bool isOn(const QAbstractButton* cell);

    std::array<QString, hotKeyCount> m_buttonNameFormats;
    /// Of hot keys that nothing is known against.
    std::array<QString, hotKeyCount> m_buttonToolTips;
};
