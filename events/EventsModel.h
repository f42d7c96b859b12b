// SPDX-License-Identifier: MIT
#pragma once

#include <platform/table/ControllerModel.h>

class SoundEventsController;

/// The events of the filtered list, a row each.
class EventsModel final : public ControllerModel<SoundEventsController>
{
public:
    /// @p controller owns the model; its outlets are connected.
    explicit EventsModel(SoundEventsController& controller);

protected:
    void setObjectValue(const QVariant& value, const QString& column, int row) override;
    bool writeRows(const QList<int>& rows, Pasteboard& pasteboard) const override;
};
