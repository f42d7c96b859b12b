// SPDX-License-Identifier: MIT
#pragma once

#include <platform/table/ControllerModel.h>

class BYAppsFilesController;

/// The applications, a row each.
class ApplicationsModel final : public ControllerModel<BYAppsFilesController>
{
public:
    /// @p controller owns the model; its outlets are connected.
    explicit ApplicationsModel(BYAppsFilesController& controller);
};
