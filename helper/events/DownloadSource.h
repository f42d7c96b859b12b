// SPDX-License-Identifier: MIT
#pragma once

#include "EventSource.h"

#include <platform/storage/FolderWatch.h>

/// Downloads: begun when a file with a name for incomplete ones appears, finished when it is given its last name. What
/// is moved there or written there at once is finished, too.
///
/// Watches the user's download folder.
class DownloadSource final : public EventSource
{
    Q_OBJECT

public:
    explicit DownloadSource(QObject* parent);

    void start() override;

private:
    void take(const FolderChange& change);

    FolderWatch m_folder;
};
