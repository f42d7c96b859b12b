// SPDX-License-Identifier: MIT
#pragma once

#include "BYEditPaneController.h"
#include "ui_EditPane.h"

#include <texts/EditSession.h>

#include <QWidget>

/// The pane below the phrase table in which a phrase's text is edited: the form, the session that loads and saves, and
/// the controller with every outlet and action connected but BYEditPaneController::abbsTableView.
class EditPane final : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(EditPane)

public:
    explicit EditPane(QWidget* parent = nullptr);

    /// The views, through which the phrase table loads and saves the text too.
    const Ui::EditPane& form() const { return m_form; }

    /// What the phrase table loads into the pane, asks about and saves.
    EditSession& session() { return *m_session; }

    /// Its set-up is still to be run.
    BYEditPaneController& controller() { return m_controller; }

private:
    EditSession* makeSession();

    Ui::EditPane m_form;
    EditSession* m_session;
    BYEditPaneController m_controller;
};
