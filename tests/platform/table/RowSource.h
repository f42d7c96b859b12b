// SPDX-License-Identifier: MIT
#pragma once

#include <platform/controls/Pasteboard.h>
#include <platform/table/TableView.h>
#include <platform/table/TableViewDataSource.h>

#include <QStringList>

/// Rows of one text and a button each, and a record of what the table asked for.
class RowSource final : public TableViewDataSource
{
public:
    int numberOfRowsInTableView(TableView*) override { return static_cast<int>(texts.size()); }

    QVariant tableView_objectValueForTableColumn_row(TableView*, TableColumn* column, int row) override
    {
        isAskedBeyondEnd = isAskedBeyondEnd || row >= texts.size();
        return column->identifier() == QStringLiteral("Text") ? QVariant(texts.value(row)) : QVariant();
    }

    void tableView_setObjectValue_forTableColumn_row(
        TableView*, const QVariant& value, TableColumn* column, int row) override
    {
        journal.append(QStringLiteral("set %1 %2 %3").arg(column->identifier()).arg(row).arg(value.toString()));
        if (value.isValid()) {
            texts[row] = value.toString();
        }
    }

    void tableView_sortDescriptorsDidChange(TableView* table, const QList<SortDescriptor>&) override
    {
        const SortDescriptor now = table->sortDescriptors().constFirst();
        journal.append(QStringLiteral("sort %1 %2").arg(now.key).arg(now.ascending));
    }

    bool tableView_writeRowsWithIndexes_toPasteboard(
        TableView*, const QList<int>& rows, Pasteboard& pasteboard) override
    {
        pasteboard.declareTypes({QStringLiteral("Row")});
        pasteboard.setString_forType(QString::number(rows.constFirst()), QStringLiteral("Row"));
        return true;
    }

    DragOperation tableView_validateDrop_proposedRow_proposedDropOperation(
        TableView* table, const DraggingInfo&, int row, DropOperation) override
    {
        proposedRow = row;
        if (row >= table->numberOfRows()) {
            return DragOperation::None;
        }
        table->setDropRow_dropOperation(row, DropOperation::On);
        return DragOperation::Copy;
    }

    bool tableView_acceptDrop_row_dropOperation(
        TableView*, const DraggingInfo& info, int row, DropOperation operation) override
    {
        const QString where = operation == DropOperation::On ? QStringLiteral("on") : QStringLiteral("above");
        const QStringList names = info.draggingPasteboard().filenames();
        journal.append(QStringLiteral("drop %1 %2 %3").arg(where).arg(row).arg(names.join(u',')));
        return true;
    }

    QStringList texts;
    QStringList journal;
    int proposedRow = -1;
    bool isAskedBeyondEnd = false;
};
