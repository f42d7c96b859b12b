// SPDX-License-Identifier: MIT
#pragma once

#include "EventSource.h"

#include <platform/storage/FolderWatch.h>

#include <QSet>

/// Files of the user's folders (desktop, documents, music, pictures, videos): copied there, renamed, saved. A file that
/// is new counts as copied, whoever has written it; one that was there, as saved.
///
/// Watches these folders themselves, not the folders in them; hidden files, and the temporary ones that programs write
/// before they rename them, do not count.
class FilesSource final : public EventSource
{
    Q_OBJECT

public:
    explicit FilesSource(QObject* parent);

    void start() override;

private:
    void take(const FolderChange& change);
    void takeRename(const FolderChange& change);

    FolderWatch m_folders;
    /// Files that have been created and are still being written, by path.
    QSet<QString> m_new;
};
