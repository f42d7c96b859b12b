// SPDX-License-Identifier: MIT
#pragma once

#include "Cell.h"

#include <QString>

#include <memory>
#include <optional>

/// How rows are ordered by a column: by the value under @p key.
struct SortDescriptor
{
    QString key;
    bool ascending = true;

    bool operator==(const SortDescriptor&) const = default;
};

/// A column of a TableView, found by its identifier. Owned by the table. Its cell is text to begin with.
class TableColumn final
{
public:
    TableColumn(QString identifier, QString title);

    const QString& identifier() const { return m_identifier; }

    /// The header's text, and the name that assistive programs hear for the column's cells.
    const QString& title() const { return m_title; }

    void setTitle(const QString& title) { m_title = title; }

    void setDataCell(std::shared_ptr<Cell> cell) { m_cell = std::move(cell); }

    /// The cell that draws @p row: the column's one cell for every row.
    Cell* dataCellForRow(int row) const;

    /// Text of the column can be edited in place.
    bool isEditable() const { return m_editable; }

    void setEditable(bool editable) { m_editable = editable; }

    /// Set where a click on the header sorts by this column.
    const std::optional<SortDescriptor>& sortDescriptorPrototype() const { return m_sortDescriptor; }

    void setSortDescriptorPrototype(std::optional<SortDescriptor> descriptor);

private:
    QString m_identifier;
    QString m_title;
    std::shared_ptr<Cell> m_cell;
    std::optional<SortDescriptor> m_sortDescriptor;
    bool m_editable = false;
};
