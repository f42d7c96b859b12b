// SPDX-License-Identifier: MIT
#pragma once

#include "BYController.h"
#include "ui_OptionsTab.h"

#include <QWidget>

/// The tab "Options": the form, and its controller with every outlet and action connected but
/// BYController::prefPaneWindow.
class OptionsTab final : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(OptionsTab)

public:
    explicit OptionsTab(QWidget* parent = nullptr);

    /// The views, some of which show what other controllers know.
    const Ui::OptionsTab& form() const { return m_form; }

    /// Its set-up is still to be run.
    BYController& controller() { return m_controller; }

private:
    void connectOutlets();
    void connectActions();
    void connectIdleTalkInterval();

    Ui::OptionsTab m_form;
    BYController m_controller;
};
