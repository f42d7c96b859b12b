// SPDX-License-Identifier: MIT
#pragma once

#include "Cell.h"
#include "TableColumn.h"
#include "TableViewDataSource.h"

#include <QAbstractTableModel>

#include <memory>
#include <vector>

class TableView;

/// What one cell shows, asked of the data source once.
struct CellContent
{
    /// The column's cell, set up for the row.
    Cell* cell = nullptr;
    QString text;
    QIcon image;
};

/// The model between a TableView's data source and Qt's views: knows the number of rows and the columns, keeps no
/// content. A row is never asked for beyond the number that the source gave last.
class TableModel final : public QAbstractTableModel
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(TableModel)

public:
    /// @p table owns the model.
    explicit TableModel(TableView* table);

    const std::vector<std::unique_ptr<TableColumn>>& columns() const { return m_columns; }

    void setColumns(std::vector<std::unique_ptr<TableColumn>> columns);
    TableColumn* column(const QModelIndex& index) const;
    /// The columns' titles are new.
    void noteTitlesChanged();

    void setDataSource(TableViewDataSource* source) { m_source = source; }

    TableViewDataSource* dataSource() const { return m_source; }

    /// The number of rows that the data source has now.
    int askForNumberOfRows() const;
    /// Adds or takes rows at the end.
    void setNumberOfRows(int rows);

    CellContent content(const QModelIndex& index) const;
    Cell* cell(const QModelIndex& index) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    Qt::DropActions supportedDragActions() const override;

private:
    QString toolTip(const QModelIndex& index) const;
    QString accessibleText(const QModelIndex& index) const;

    TableView* m_table;
    TableViewDataSource* m_source = nullptr;
    std::vector<std::unique_ptr<TableColumn>> m_columns;
    int m_rows = 0;
};
