// SPDX-License-Identifier: MIT
#pragma once

#include <sounds/SoundRowsModel.h>

class SoundEventsController;

/// The events of the filtered list, a row each.
class EventsModel final : public SoundRowsModel<SoundEventsController>
{
public:
    /// @p controller owns the model; its outlets are connected.
    explicit EventsModel(SoundEventsController& controller);
};
