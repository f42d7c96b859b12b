// SPDX-License-Identifier: MIT
#include "ApplicationsModel.h"

#include "BYAppsFilesController.h"

#include <platform/desktop/Text.h>

namespace {

std::vector<TableModel::Column> columns(QMenu* menu)
{
    using Kind = TableModel::Kind;
    return {
        {.identifier = BYAppsFilesController::iconColumn, .title = Text::tr("Icon"), .kind = Kind::Image},
        {.identifier = BYAppsFilesController::appColumn, .title = Text::tr("Application"), .width = 260},
        {.identifier = BYAppsFilesController::pathColumn, .title = Text::tr("What is done in it")},
        {.identifier = BYAppsFilesController::popUpColumn,
            .title = Text::tr("Choose what is done"),
            .kind = Kind::Menu,
            .menu = menu},
    };
}

} // namespace

ApplicationsModel::ApplicationsModel(BYAppsFilesController& controller)
    : ControllerModel(controller, controller.appsFilesTable, columns(controller.appsPopUp))
{
}
