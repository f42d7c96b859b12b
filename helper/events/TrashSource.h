// SPDX-License-Identifier: MIT
#pragma once

#include "EventSource.h"

#include <platform/storage/FolderWatch.h>

/// The user's trash: something is put in, and nothing is left of what was there.
///
/// Watches the trash in the user's data folder (public source: freedesktop.org Trash Specification); those of other
/// disks are not watched.
class TrashSource final : public EventSource
{
    Q_OBJECT

public:
    explicit TrashSource(QObject* parent);

    void start() override;

private:
    void take(const FolderChange& change);

    FolderWatch m_folder;
};
