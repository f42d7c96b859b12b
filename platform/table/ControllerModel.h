// SPDX-License-Identifier: MIT
#pragma once

#include "TableModel.h"

#include <utility>

class TableView;

/// A TableModel whose content a controller's operations give; the table that shows it is their first argument.
template <typename Controller>
class ControllerModel : public TableModel
{
public:
    /// @p controller owns the model.
    ControllerModel(Controller& controller, TableView* table, std::vector<Column> columns)
        : TableModel(std::move(columns), &controller)
        , m_controller(controller)
        , m_table(table)
    {
    }

    int countRows() const override { return m_controller.numberOfRowsInTableView(m_table); }

protected:
    QVariant objectValue(const QString& column, int row) const override
    {
        return m_controller.tableView_objectValueForTableColumn_row(m_table, column, row);
    }

    QString toolTip(const QString& column, int row) const override
    {
        return m_controller.tableView_toolTipForTableColumn_row(m_table, column, row);
    }

    QString accessibleText(const QString& column, int row) const override
    {
        return m_controller.tableView_accessibleTextForTableColumn_row(m_table, column, row);
    }

    Qt::DropAction validateDrop(const Pasteboard& dragged, int row, DropOperation operation) const override
    {
        return m_controller.tableView_validateDrop_proposedRow_proposedDropOperation(m_table, dragged, row, operation);
    }

    bool acceptDrop(const Pasteboard& dragged, int row, DropOperation operation) override
    {
        return m_controller.tableView_acceptDrop_row_dropOperation(m_table, dragged, row, operation);
    }

    Controller& controller() const { return m_controller; }

    TableView* table() const { return m_table; }

private:
    Controller& m_controller;
    TableView* m_table;
};
