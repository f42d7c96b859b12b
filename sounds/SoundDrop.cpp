// SPDX-License-Identifier: MIT
#include "SoundDrop.h"

#include "SoundKinds.h"

#include <platform/archive/KeyedArchive.h>
#include <platform/controls/Pasteboard.h>
#include <platform/table/TableView.h>

using namespace Qt::StringLiterals;

const QString SoundDrop::rowsPasteboardType = u"MyPrivateTableViewDataType"_s;

Qt::DropAction SoundDrop::validate(const TableView* table, const Pasteboard& dragged, int row)
{
    return row < table->numberOfRows() ? SoundKinds::dropOperation(dragged.filename()) : Qt::IgnoreAction;
}

bool SoundDrop::writeRows(const QList<int>& rows, Pasteboard& pasteboard)
{
    pasteboard.declareTypes({rowsPasteboardType});
    pasteboard.setData_forType(KeyedArchive::archivedIndexSet(rows), rowsPasteboardType);
    return true;
}
