// SPDX-License-Identifier: MIT
#include "TableColumn.h"

#include <utility>

TableColumn::TableColumn(QString identifier, QString title)
    : m_identifier(std::move(identifier))
    , m_title(std::move(title))
    , m_cell(std::make_shared<TextCell>())
{
    m_cell->setEditable(true);
}

Cell* TableColumn::dataCellForRow(int /*row*/) const
{
    return m_cell.get();
}

void TableColumn::setSortDescriptorPrototype(std::optional<SortDescriptor> descriptor)
{
    m_sortDescriptor = std::move(descriptor);
}
