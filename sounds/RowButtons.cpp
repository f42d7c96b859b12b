// SPDX-License-Identifier: MIT
#include "RowButtons.h"

#include <core/SharedNames.h>
#include <platform/controls/TemplateIcon.h>
#include <platform/desktop/Bundle.h>
#include <platform/table/TableView.h>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

std::shared_ptr<ButtonCell> smallButtonCell()
{
    auto cell = std::make_shared<ButtonCell>();
    cell->setControlSize(Cell::ControlSize::Small);
    cell->setEditable(false);
    return cell;
}

void give(TableView& table, const QString& identifier, const std::shared_ptr<ButtonCell>& cell)
{
    if (TableColumn* const column = table.tableColumnWithIdentifier(identifier)) {
        column->setDataCell(cell);
    }
}

} // namespace

RowButtons::Icons RowButtons::loadIcons()
{
    const QString resources = Bundle::bundleWithIdentifier(paneBundleIdentifier).resourcePath();
    return {
        .reveal = templateIcon(resources + u"/reveal.tif"_s),
        .play = templateIcon(resources + u"/play.tif"_s),
        .remove = templateIcon(resources + u"/removeCross.tif"_s),
        .add = templateIcon(resources + u"/addCross.tif"_s),
    };
}

std::shared_ptr<ButtonCell> RowButtons::giveTo(
    TableView& table, const QStringList& plainColumns, ButtonCell::Action trashAction)
{
    const auto plainCell = smallButtonCell();
    for (const QString& identifier : plainColumns) {
        give(table, identifier, plainCell);
    }
    auto trashCell = smallButtonCell();
    trashCell->setKeyEquivalent(u"a"_s);
    trashCell->setAction(std::move(trashAction));
    give(table, u"Trash"_s, trashCell);
    return trashCell;
}
