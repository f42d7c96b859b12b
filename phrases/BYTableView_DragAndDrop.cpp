// SPDX-License-Identifier: MIT
#include "BYTableView.h"

#include <core/BYGlobals.h>
#include <core/Phrase.h>
#include <platform/controls/Pasteboard.h>
#include <sounds/SoundDrop.h>

#include <algorithm>

bool BYTableView::tableView_writeRowsWithIndexes_toPasteboard(
    TableView*, const QList<int>& rows, Pasteboard& pasteboard)
{
    return SoundDrop::writeRows(rows, pasteboard);
}

Qt::DropActions BYTableView::draggingSourceOperationMaskForLocal(bool local) const
{
    return local ? Qt::CopyAction : Qt::LinkAction;
}

Qt::DropAction BYTableView::tableView_validateDrop_proposedRow_proposedDropOperation(
    TableView* table, const Pasteboard& info, int row, DropOperation)
{
    return SoundDrop::validate(table, info, row);
}

bool BYTableView::tableView_acceptDrop_row_dropOperation(TableView*, const Pasteboard& info, int row, DropOperation)
{
    const std::optional<QString> path = info.filename();
    const Phrase entry = entryAt(std::max(row, 0));
    if (!path || !entry) {
        return false;
    }
    entry.setSoundFilepath(*path);
    Changes::saveDocument();
    return true;
}
