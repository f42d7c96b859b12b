// SPDX-License-Identifier: MIT
#pragma once

#include "RowButtons.h"

#include <platform/table/ControllerModel.h>

/// What the rows of phrases and of events have in common: the row buttons, and dragging the rows' sounds out.
template <typename Controller>
class SoundRowsModel : public ControllerModel<Controller>
{
public:
    using ControllerModel<Controller>::ControllerModel;

protected:
    void setObjectValue(const QVariant& value, const QString& column, int row) override
    {
        if (column == RowButtons::trashColumn) {
            this->controller().trashButtonAction(this->table());
        }
        this->controller().tableView_setObjectValue_forTableColumn_row(this->table(), value, column, row);
    }

    bool writeRows(const QList<int>& rows, Pasteboard& pasteboard) const override
    {
        return this->controller().tableView_writeRowsWithIndexes_toPasteboard(this->table(), rows, pasteboard);
    }
};
