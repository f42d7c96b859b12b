// SPDX-License-Identifier: MIT
#pragma once

#include "BYAppsFilesController.h"

#include <QWidget>

/// The tab "Applications": the form, and its controller with every outlet and action connected.
class ApplicationsTab final : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ApplicationsTab)

public:
    explicit ApplicationsTab(QWidget* parent = nullptr);

    /// Its set-up is still to be run.
    BYAppsFilesController& controller() { return m_controller; }

private:
    BYAppsFilesController m_controller;
};
