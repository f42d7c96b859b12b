// SPDX-License-Identifier: MIT
#pragma once

#include "BYEditPaneController.h"
#include "ui_EditPane.h"

#include <QWidget>

/// The pane below the phrase table in which a phrase's text is edited: the form, and its controller with every outlet
/// and action connected but BYEditPaneController::abbsTableView.
class EditPane final : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(EditPane)

public:
    explicit EditPane(QWidget* parent = nullptr);

    /// The views, through which the phrase table loads and saves the text too.
    const Ui::EditPane& form() const { return m_form; }

    /// Its set-up is still to be run.
    BYEditPaneController& controller() { return m_controller; }

private:
    Ui::EditPane m_form;
    BYEditPaneController m_controller;
};
