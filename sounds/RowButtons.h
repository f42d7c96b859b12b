// SPDX-License-Identifier: MIT
#pragma once

#include <platform/table/Cell.h>

#include <QIcon>
#include <QStringList>

#include <memory>

/// The small picture buttons in the rows of both tables.
namespace RowButtons {

struct Icons
{
    QIcon reveal;
    QIcon play;
    QIcon remove;
    QIcon add;
};

/// The pictures from the pane's resources; one that cannot be loaded is empty.
Icons loadIcons();

/// Gives the columns @p plainColumns of @p table one button cell that has no action of its own, and the column "Trash"
/// another, which performs @p trashAction, as Command-A does. Columns that the table lacks are left out. Answers the
/// cell of the "Trash" column.
std::shared_ptr<ButtonCell> giveTo(TableView& table, const QStringList& plainColumns, ButtonCell::Action trashAction);

} // namespace RowButtons
