// SPDX-License-Identifier: MIT
#include "ApplicationsModel.h"

#include "BYAppsFilesController.h"

#include <platform/panels/InterfaceText.h>

namespace {

std::vector<TableModel::Column> columns(QMenu* menu)
{
    using Kind = TableModel::Kind;
    return {
        {.identifier = BYAppsFilesController::iconColumn, .title = localizedText("Icon"), .kind = Kind::Image},
        {.identifier = BYAppsFilesController::appColumn, .title = localizedText("Application"), .width = 260},
        {.identifier = BYAppsFilesController::pathColumn, .title = localizedText("What is done in it")},
        {.identifier = BYAppsFilesController::popUpColumn,
            .title = localizedText("Choose what is done"),
            .kind = Kind::Menu,
            .menu = menu},
    };
}

} // namespace

ApplicationsModel::ApplicationsModel(BYAppsFilesController& controller)
    : ControllerModel(controller, controller.appsFilesTable, columns(controller.appsPopUp))
{
}
