// SPDX-License-Identifier: MIT
#include "TableViewDataSource.h"

void TableViewDataSource::tableView_setObjectValue_forTableColumn_row(
    TableView* /*table*/, const QVariant& /*value*/, TableColumn* /*column*/, int /*row*/)
{
}

QString TableViewDataSource::tableView_toolTipForTableColumn_row(
    TableView* /*table*/, TableColumn* /*column*/, int /*row*/)
{
    return {};
}

QString TableViewDataSource::tableView_accessibleTextForTableColumn_row(
    TableView* /*table*/, TableColumn* /*column*/, int /*row*/)
{
    return {};
}

void TableViewDataSource::tableView_sortDescriptorsDidChange(
    TableView* /*table*/, const QList<SortDescriptor>& /*oldDescriptors*/)
{
}

bool TableViewDataSource::tableView_writeRowsWithIndexes_toPasteboard(
    TableView* /*table*/, const QList<int>& /*rows*/, Pasteboard& /*pasteboard*/)
{
    return false;
}

DragOperation TableViewDataSource::tableView_validateDrop_proposedRow_proposedDropOperation(
    TableView* /*table*/, const DraggingInfo& /*info*/, int /*row*/, DropOperation /*operation*/)
{
    return DragOperation::None;
}

bool TableViewDataSource::tableView_acceptDrop_row_dropOperation(
    TableView* /*table*/, const DraggingInfo& /*info*/, int /*row*/, DropOperation /*operation*/)
{
    return false;
}
