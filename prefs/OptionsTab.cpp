// SPDX-License-Identifier: MIT
#include "OptionsTab.h"

#include "TriggerCells.h"

OptionsTab::OptionsTab(QWidget* parent)
    : QWidget(parent)
{
    m_form.setupUi(this);
    TriggerCells::fill(*m_form.triggersPrefsMatrix, m_form.pauseHotKeyButton);
    connectOutlets();
    connectActions();
    connectIdleTalkInterval();
}

void OptionsTab::connectOutlets()
{
    m_controller.idleTalkIntervalText = m_form.idleTalkIntervalText;
    m_controller.idleTalkIntervalStepper = m_form.idleTalkIntervalStepper;
    m_controller.triggerPref = m_form.triggerPref;
    m_controller.expansionPref = m_form.expansionPref;
    m_controller.menuPref = m_form.menuPref;
    m_controller.sortPref = m_form.sortPref;
    m_controller.triggersPrefsMatrix = m_form.triggersPrefsMatrix;
    m_controller.onOffRadioButton = m_form.onOffRadioButton;
    m_controller.addHotKeyButton = m_form.addHotKeyButton;
    m_controller.editHotKeyButton = m_form.editHotKeyButton;
    m_controller.pauseHotKeyButton = m_form.pauseHotKeyButton;
}

void OptionsTab::connectActions()
{
    const auto onClick = [this](QAbstractButton* button, void (BYController::*action)(QWidget*)) {
        connect(button, &QAbstractButton::clicked, &m_controller, [=, this] { (m_controller.*action)(button); });
    };
    onClick(m_form.selectAllTriggersButton, &BYController::selectAllTriggers);
    onClick(m_form.deSelectAllTriggersButton, &BYController::deSelectAllTriggers);
    onClick(m_form.playSoundOnDropPrefButton, &BYController::enterExpansionPref);
    onClick(m_form.helpButton, &BYController::showHelp);

    const auto onChoice = [this](Matrix* matrix, void (BYController::*action)(Matrix*)) {
        connect(matrix, &Matrix::acted, &m_controller, action);
    };
    onChoice(m_form.triggersPrefsMatrix, &BYController::enterTriggerPref);
    onChoice(m_form.triggerDelimitersMatrix, &BYController::enterTriggerDelimitersPref);
    onChoice(m_form.menuPrefsMatrix, &BYController::enterMenuPref);
    onChoice(m_form.sortPrefsMatrix, &BYController::enterSortPref);
    onChoice(m_form.iTunesAnnouncerPrefMatrix, &BYController::iTunesAnnouncerPref);

    for (QPushButton* button : {m_form.addHotKeyButton, m_form.editHotKeyButton, m_form.pauseHotKeyButton}) {
        connect(button, &QPushButton::clicked, &m_controller, [=, this] { m_controller.hitSetAddHotKey(button); });
    }
}

void OptionsTab::connectIdleTalkInterval()
{
    connect(m_form.idleTalkIntervalStepper, &QSpinBox::valueChanged, &m_controller,
        [this] { m_controller.enterIdleTalkIntervalPref(m_form.idleTalkIntervalStepper); });
    QLineEdit* field = m_form.idleTalkIntervalText;
    const auto hearBeginOfEditing = [=, this] {
        const auto once = Qt::ConnectionType(Qt::UniqueConnection | Qt::SingleShotConnection);
        connect(field, &QLineEdit::textEdited, &m_controller, &BYController::textDidBeginEditing, once);
    };
    hearBeginOfEditing();
    // A field that is left without a change has nothing to say.
    connect(field, &QLineEdit::editingFinished, &m_controller, [=, this] {
        if (field->isModified()) {
            m_controller.enterIdleTalkIntervalPref(field);
            hearBeginOfEditing();
        }
    });
}
