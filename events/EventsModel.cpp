// SPDX-License-Identifier: MIT
#include "EventsModel.h"

#include "SoundEventsController.h"

#include <core/SharedNames.h>
#include <platform/desktop/Text.h>
#include <platform/table/TableView.h>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace {

std::vector<TableModel::Column> columns(QMenu* menu)
{
    std::vector<TableModel::Column> columns{
        {.identifier = EventKey::eventName, .title = Text::tr("Event"), .width = 220},
        {.identifier = EventKey::eventCatName, .title = Text::tr("Category"), .width = 110},
        {.identifier = EventKey::soundFilepath, .title = Text::tr("Sound")},
    };
    std::ranges::move(RowButtons::columns(), std::back_inserter(columns));
    columns.push_back(
        {.identifier = u"actionPopUp"_s, .title = Text::tr("Filter"), .kind = TableModel::Kind::Menu, .menu = menu});
    return columns;
}

} // namespace

EventsModel::EventsModel(SoundEventsController& controller)
    : SoundRowsModel(controller, controller.mySoundEventsTable, columns(controller.myVolumePopUp))
{
}
