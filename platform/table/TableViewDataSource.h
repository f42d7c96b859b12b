// SPDX-License-Identifier: MIT
#pragma once

#include "TableColumn.h"

#include <platform/controls/DraggingInfo.h>

#include <QList>
#include <QVariant>

class Pasteboard;
class TableView;

/// Where a TableView gets its rows. Rows are asked for when they are drawn, and only below the number of rows last
/// given.
class TableViewDataSource
{
public:
    TableViewDataSource() = default;
    TableViewDataSource(const TableViewDataSource&) = delete;
    TableViewDataSource& operator=(const TableViewDataSource&) = delete;
    TableViewDataSource(TableViewDataSource&&) = delete;
    TableViewDataSource& operator=(TableViewDataSource&&) = delete;
    virtual ~TableViewDataSource() = default;

    virtual int numberOfRowsInTableView(TableView* table) = 0;

    /// The value that a cell shows: text (QString), an icon (QIcon), or nothing (an invalid QVariant). May set up the
    /// column's cell for the row first.
    virtual QVariant tableView_objectValueForTableColumn_row(TableView* table, TableColumn* column, int row) = 0;

    /// The user has changed a cell: edited text, or a click on a button cell (@p value is then invalid).
    virtual void tableView_setObjectValue_forTableColumn_row(
        TableView* table, const QVariant& value, TableColumn* column, int row);

    /// The tool tip of a cell; empty for none. Also read out by assistive programs.
    virtual QString tableView_toolTipForTableColumn_row(TableView* table, TableColumn* column, int row);

    /// What an assistive program says for a cell that shows only an image; empty where the text says it all.
    virtual QString tableView_accessibleTextForTableColumn_row(TableView* table, TableColumn* column, int row);

    /// The user has clicked a column header: the table's sort descriptors are new.
    virtual void tableView_sortDescriptorsDidChange(TableView* table, const QList<SortDescriptor>& oldDescriptors);

    /// A drag of these rows begins: puts what they are on @p pasteboard. False refuses the drag.
    virtual bool tableView_writeRowsWithIndexes_toPasteboard(
        TableView* table, const QList<int>& rows, Pasteboard& pasteboard);

    /// Whether something dragged over the table may be dropped: the operation, or DragOperation::None. @p row equal to
    /// the number of rows means below the last row. May retarget the drop with TableView::setDropRow_dropOperation.
    virtual DragOperation tableView_validateDrop_proposedRow_proposedDropOperation(
        TableView* table, const DraggingInfo& info, int row, DropOperation operation);

    /// The drop that was validated; false when it could not be taken. @p row may be -1: on no row.
    virtual bool tableView_acceptDrop_row_dropOperation(
        TableView* table, const DraggingInfo& info, int row, DropOperation operation);
};
