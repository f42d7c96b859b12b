// SPDX-License-Identifier: MIT
#include "EventsModel.h"

#include "SoundEventsController.h"

#include <core/SharedNames.h>
#include <platform/panels/InterfaceText.h>
#include <platform/table/TableView.h>
#include <sounds/RowButtons.h>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace {

std::vector<TableModel::Column> columns(QMenu* menu)
{
    std::vector<TableModel::Column> columns{
        {.identifier = EventKey::eventName, .title = localizedText("Event"), .width = 220},
        {.identifier = EventKey::eventCatName, .title = localizedText("Category"), .width = 110},
        {.identifier = EventKey::soundFilepath, .title = localizedText("Sound")},
    };
    std::ranges::move(RowButtons::columns(), std::back_inserter(columns));
    columns.push_back({.identifier = u"actionPopUp"_s,
        .title = localizedText("Filter"),
        .kind = TableModel::Kind::Menu,
        .menu = menu});
    return columns;
}

} // namespace

EventsModel::EventsModel(SoundEventsController& controller)
    : ControllerModel(controller, controller.mySoundEventsTable, columns(controller.myVolumePopUp))
{
}

void EventsModel::setObjectValue(const QVariant& value, const QString& column, int row)
{
    if (column == RowButtons::trashColumn) {
        controller().trashButtonAction(table());
    }
    controller().tableView_setObjectValue_forTableColumn_row(table(), value, column, row);
}

bool EventsModel::writeRows(const QList<int>& rows, Pasteboard& pasteboard) const
{
    return controller().tableView_writeRowsWithIndexes_toPasteboard(table(), rows, pasteboard);
}
