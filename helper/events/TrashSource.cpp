// SPDX-License-Identifier: MIT
#include "TrashSource.h"

#include <QDir>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

TrashSource::TrashSource(QObject* parent)
    : EventSource(parent)
    , m_folder({QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/Trash/files"_s}, this)
{
}

void TrashSource::start()
{
    connect(&m_folder, &FolderWatch::changed, this, &TrashSource::take);
    m_folder.start();
}

/// From another disk a file is copied into the trash; what is put back or moved on empties nothing.
void TrashSource::take(const FolderChange& change)
{
    using Kind = FolderChange::Kind;
    if (change.kind == Kind::MovedIn || change.kind == Kind::Created) {
        tell(EventCode::FileTrashed);
    } else if (change.kind == Kind::Deleted &&
               QDir(change.folder).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot)) {
        tell(EventCode::TrashEmptied);
    }
}
