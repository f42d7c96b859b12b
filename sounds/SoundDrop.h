// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

class Pasteboard;
class TableView;

/// Drag and drop of the two tables whose rows have a sound.
namespace SoundDrop {

/// The pasteboard type of dragged rows: the keyed archive of their index set.
extern const QString rowsPasteboardType;

/// The answer while something is dragged over @p row: refused below the last row; otherwise SoundKinds::dropOperation()
/// decides.
Qt::DropAction validate(const TableView* table, const Pasteboard& dragged, int row);

/// Puts the dragged @p rows on @p pasteboard; always true.
bool writeRows(const QList<int>& rows, Pasteboard& pasteboard);

} // namespace SoundDrop
