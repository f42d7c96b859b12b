// SPDX-License-Identifier: MIT
#include "ApplicationsTab.h"

#include "ui_ApplicationsTab.h"

#include <platform/desktop/Text.h>

#include <QMenu>

ApplicationsTab::ApplicationsTab(QWidget* parent)
    : QWidget(parent)
{
    Ui::ApplicationsTab form;
    form.setupUi(this);
    auto* menu = new QMenu(this);
    menu->addAction(Text::tr("Do not expand"))->setData(1);
    menu->addAction(Text::tr("Expand using a document…"))->setData(2);
    m_controller.appsFilesTable = form.appsFilesTable;
    m_controller.removeAppButton = form.removeAppButton;
    m_controller.appsPopUp = menu;

    connect(menu, &QMenu::triggered, &m_controller, &BYAppsFilesController::appsPopUpAction);
    connect(form.addAppButton, &QPushButton::clicked, &m_controller,
        [this] { m_controller.addAppToExclusionList(m_controller.appsFilesTable); });
    connect(form.removeAppButton, &QPushButton::clicked, &m_controller,
        [this] { m_controller.removeAppFromExclusionList(m_controller.removeAppButton); });
}
