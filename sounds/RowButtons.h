// SPDX-License-Identifier: MIT
#pragma once

#include <platform/table/TableModel.h>

#include <QIcon>

#include <vector>

/// The small picture buttons in the rows of both tables.
namespace RowButtons {

/// @name Identifiers of the columns
/// @{
extern const QString playColumn;
extern const QString revealColumn;
extern const QString trashColumn;

/// @}

struct Icons
{
    QIcon reveal;
    QIcon play;
    QIcon remove;
    QIcon add;
};

/// The pictures from the pane's resources; one that cannot be loaded is empty.
Icons loadIcons();

/// What a click on the button in @p column does for an entry; empty for any other column.
QString toolTip(const QString& column, bool hasSound);

/// The columns in their order. Command-A does what a click on the last one's button does.
std::vector<TableModel::Column> columns();

} // namespace RowButtons
