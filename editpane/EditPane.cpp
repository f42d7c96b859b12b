// SPDX-License-Identifier: MIT
#include "EditPane.h"

EditPane::EditPane(QWidget* parent)
    : QWidget(parent)
    , m_session(makeSession())
    , m_controller(*m_session)
{
    m_form.formattingBar->setTextView(m_form.editEntryPane);
    m_controller.dateTimePopUpButton = m_form.dateTimePopUpButton;
    m_controller.textFormattingPopUpButton = m_form.textFormattingPopUpButton;
    m_controller.saveEditedAbbButton = m_form.saveEditedAbbButton;
    m_controller.editPane = m_form.editEntryPane;
    m_controller.plainOrRichRadioButton = m_form.plainOrRichRadioButton;

    connect(m_form.saveEditedAbbButton, &QPushButton::clicked, &m_controller,
        [this] { m_controller.saveEditedAbb(m_form.saveEditedAbbButton); });
    connect(m_form.plainOrRichRadioButton, &Matrix::acted, &m_controller, &BYEditPaneController::plainOrRich);
}

EditSession* EditPane::makeSession()
{
    m_form.setupUi(this);
    return new EditSession({.text = m_form.editEntryPane,
                               .save = m_form.saveEditedAbbButton,
                               .plainOrRich = m_form.plainOrRichRadioButton,
                               .dateTime = m_form.dateTimePopUpButton,
                               .textFormatting = m_form.textFormattingPopUpButton},
        this);
}
