// SPDX-License-Identifier: MIT
#pragma once

#include "PTHotKey.h"
#include "PTKeyBroadcaster.h"
#include "PTKeyCombo.h"

#include <QDialog>
#include <QLabel>
#include <QObject>
#include <QPointer>
#include <QString>

/// Who is told the outcome of a PTKeyComboPanel that runs as a sheet.
class PTKeyComboPanelTarget : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PTKeyComboPanelTarget)

public:
    explicit PTKeyComboPanelTarget(QObject* parent = nullptr);
    ~PTKeyComboPanelTarget() override;

    /// Called once, after the sheet has gone. 1 for OK and Clear, 0 for Cancel; the panel's keyCombo() is what was
    /// chosen.
    virtual void hotKeySheetDidEndWithReturnCode(int returnCode) = 0;
};

/// The controller of the panel in which the user records a key combination: it names the hot key that is being set,
/// shows the combination pressed last, and offers OK, Cancel and Clear. Return and keypad Enter press OK, Escape
/// presses Cancel; every other key press is recorded, those with modifiers too. One panel serves all hot keys, one at a
/// time; its window is loaded on first use.
class PTKeyComboPanel final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PTKeyComboPanel)

public:
    static constexpr int okReturn = 1;
    static constexpr int cancelReturn = 0;

    explicit PTKeyComboPanel(QObject* parent = nullptr);
    ~PTKeyComboPanel() override;

    /// The panel that everybody uses; made on first use, lives as long as the application.
    static PTKeyComboPanel& sharedPanel();

    /// The panel's window, loaded if it is not yet there.
    QDialog* window();

    const PTKeyCombo& keyCombo() const { return mKeyCombo; }

    void setKeyCombo(const PTKeyCombo& keyCombo);

    /// The name of the hot key that is being set.
    const QString& keyBindingName() const { return mKeyName; }

    void setKeyBindingName(const QString& name);

    /// Whether the panel is up. It cannot be run again then; an assistive program can try, since it reaches controls
    /// that are blocked.
    bool isRunning() const { return m_window && m_window->isVisible(); }

    /// Runs the panel as an application-modal window. 1 for OK and Clear, 0 for Cancel and for closing the window.
    int runModal();
    /// Lets the user edit @p hotKey modally; on 1 it gets the new combination and is registered with the shared
    /// PTHotKeyCenter.
    void runModalForHotKey(const PTHotKey::Pointer& hotKey);
    /// Runs the panel as a sheet on @p window and returns at once. @p target (may be null) hears the outcome, unless it
    /// is destroyed before.
    void runSheeetForModalWindow_target(QWidget* window, PTKeyComboPanelTarget* target);

    /// @name The panel's buttons
    /// @{
    void ok(QObject* sender = nullptr);
    void cancel(QObject* sender = nullptr);
    void clear(QObject* sender = nullptr);
    /// @}

    void windowDidLoad();
    void noteKeyBroadcast(const PTKeyCombo& keyCombo);
    void _sheetDidEnd_returnCode_contextInfo(QDialog* sheet, int returnCode, PTKeyComboPanelTarget* contextInfo);
    void _refreshContents();

    /// @name Outlets
    /// Null until the window is loaded.
    /// @{
    QPointer<QLabel> mTitleField;
    QPointer<QLabel> mComboField;
    QPointer<PTKeyBroadcaster> mKeyBcaster;
    /// @}

private:
    void loadWindow();
    void endWithCode(int returnCode);

    /// Nobody's child while it is closed; as a sheet the child of the window that it is on, and goes with that.
    QPointer<QDialog> m_window;
    /// The title line as the interface file gives it, with one %@ for the hot key's name.
    QString mTitleFormat;
    /// The same for what an assistive program reads of mComboField, whose accessible name hides its text.
    QString m_comboNameFormat;
    QString mKeyName;
    PTKeyCombo mKeyCombo;
};
