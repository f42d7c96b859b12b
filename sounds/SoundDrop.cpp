// SPDX-License-Identifier: MIT
#include "SoundDrop.h"

#include "SoundKinds.h"

#include <platform/archive/KeyedArchive.h>
#include <platform/controls/Pasteboard.h>
#include <platform/table/TableView.h>

using namespace Qt::StringLiterals;

const QString SoundDrop::rowsPasteboardType = u"MyPrivateTableViewDataType"_s;

DragOperation SoundDrop::validate(TableView* table, const DraggingInfo& info, int row)
{
    if (row >= table->numberOfRows()) {
        return DragOperation::None;
    }
    table->setDropRow_dropOperation(row, DropOperation::On);
    return SoundKinds::dropOperation(info.draggingPasteboard().filename());
}

bool SoundDrop::writeRows(const QList<int>& rows, Pasteboard& pasteboard)
{
    pasteboard.declareTypes({rowsPasteboardType});
    pasteboard.setData_forType(KeyedArchive::archivedIndexSet(rows), rowsPasteboardType);
    return true;
}
