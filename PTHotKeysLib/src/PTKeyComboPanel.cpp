// SPDX-License-Identifier: MIT
#include "PTKeyComboPanel.h"

#include "PTHotKeyCenter.h"
#include "PTKeyCodeTranslator.h"
#include "ui_PTKeyComboPanel.h"

#include <QCoreApplication>

#include <tuple>

using namespace Qt::StringLiterals;

PTKeyComboPanelTarget::PTKeyComboPanelTarget(QObject* parent)
    : QObject(parent)
{
}

PTKeyComboPanelTarget::~PTKeyComboPanelTarget() = default;

PTKeyComboPanel::PTKeyComboPanel(QObject* parent)
    : QObject(parent)
{
}

PTKeyComboPanel::~PTKeyComboPanel()
{
    delete m_window;
}

PTKeyComboPanel& PTKeyComboPanel::sharedPanel()
{
    static QPointer<PTKeyComboPanel> panel;
    if (panel.isNull()) {
        panel = new PTKeyComboPanel(QCoreApplication::instance());
    }
    return *panel;
}

QDialog* PTKeyComboPanel::window()
{
    if (m_window.isNull()) {
        loadWindow();
    }
    return m_window;
}

void PTKeyComboPanel::loadWindow()
{
    m_window = new QDialog;
    Ui::PTKeyComboPanel ui;
    ui.setupUi(m_window);
    mTitleField = ui.mTitleField;
    mComboField = ui.mComboField;
    mKeyBcaster = ui.mKeyBcaster;
    connect(ui.okButton, &QPushButton::clicked, this, [this, sender = ui.okButton] { ok(sender); });
    connect(ui.cancelButton, &QPushButton::clicked, this, [this, sender = ui.cancelButton] { cancel(sender); });
    connect(ui.clearButton, &QPushButton::clicked, this, [this, sender = ui.clearButton] { clear(sender); });
    windowDidLoad();
    // Reading the keyboard layout and the names of keys takes longer than a frame: not while the user waits for the
    // first key press to show.
    std::ignore = PTKeyCodeTranslator::currentTranslator();
    std::ignore = PTKeyCombo::_keyCodesDictionary();
}

void PTKeyComboPanel::windowDidLoad()
{
    mTitleFormat = mTitleField->text();
    m_comboNameFormat = mComboField->accessibleName();
    connect(mKeyBcaster, &PTKeyBroadcaster::PTKeyBroadcasterKeyEvent, this, &PTKeyComboPanel::noteKeyBroadcast);
}

void PTKeyComboPanel::setKeyCombo(const PTKeyCombo& keyCombo)
{
    mKeyCombo = keyCombo;
    _refreshContents();
}

void PTKeyComboPanel::setKeyBindingName(const QString& name)
{
    mKeyName = name;
    _refreshContents();
}

void PTKeyComboPanel::_refreshContents()
{
    if (mComboField) {
        const QString combination = mKeyCombo.description();
        mComboField->setText(combination);
        mComboField->setAccessibleName(QString(m_comboNameFormat).replace(u"%@"_s, combination));
    }
    if (mTitleField) {
        mTitleField->setText(QString(mTitleFormat).replace(u"%@"_s, mKeyName));
    }
}

void PTKeyComboPanel::noteKeyBroadcast(const PTKeyCombo& keyCombo)
{
    setKeyCombo(keyCombo);
}

int PTKeyComboPanel::runModal()
{
    QDialog* const panel = window();
    _refreshContents();
    mKeyBcaster->setFocus();
    return panel->exec();
}

void PTKeyComboPanel::runModalForHotKey(const PTHotKey::Pointer& hotKey)
{
    setKeyBindingName(hotKey->name());
    setKeyCombo(hotKey->keyCombo());
    if (runModal() != okReturn) {
        return;
    }
    hotKey->setKeyCombo(mKeyCombo);
    // A refusal is the registry's to log; the combination stands either way.
    std::ignore = PTHotKeyCenter::sharedCenter().registerHotKey(hotKey);
}

void PTKeyComboPanel::runSheeetForModalWindow_target(QWidget* window, PTKeyComboPanelTarget* target)
{
    QDialog* const sheet = this->window();
    // Under its parent the dialog opens centred, and blocks that window only.
    sheet->setParent(window, sheet->windowFlags());
    _refreshContents();
    mKeyBcaster->setFocus();
    connect(
        sheet, &QDialog::finished, this,
        [this, sheet, target = QPointer(target)](
            int returnCode) { _sheetDidEnd_returnCode_contextInfo(sheet, returnCode, target); },
        Qt::SingleShotConnection);
    sheet->open();
}

void PTKeyComboPanel::_sheetDidEnd_returnCode_contextInfo(
    QDialog* sheet, int returnCode, PTKeyComboPanelTarget* contextInfo)
{
    sheet->setParent(nullptr, sheet->windowFlags());
    if (contextInfo != nullptr) {
        contextInfo->hotKeySheetDidEndWithReturnCode(returnCode);
    }
}

void PTKeyComboPanel::ok(QObject* /*sender*/)
{
    endWithCode(okReturn);
}

void PTKeyComboPanel::cancel(QObject* /*sender*/)
{
    endWithCode(cancelReturn);
}

void PTKeyComboPanel::clear(QObject* /*sender*/)
{
    setKeyCombo(PTKeyCombo::clearKeyCombo());
    endWithCode(okReturn);
}

/// Ends the sheet or the modal run, whichever it is.
void PTKeyComboPanel::endWithCode(int returnCode)
{
    window()->done(returnCode);
}
