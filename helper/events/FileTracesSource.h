// SPDX-License-Identifier: MIT
#pragma once

#include "EventSource.h"

#include <platform/storage/FolderWatch.h>

/// What leaves a trace in a folder that it is known by: a screen shot, an opened document, a program that has crashed.
///
/// Watches the folder for screen shots ($XDG_SCREENSHOTS_DIR, else "Screenshots" in the user's pictures), the list of
/// recent documents (public source: freedesktop.org Desktop Bookmarks), and where systemd stores core dumps.
class FileTracesSource final : public EventSource
{
    Q_OBJECT

public:
    explicit FileTracesSource(QObject* parent);

    void start() override;

private:
    void take(const FolderChange& change);

    QString m_screenshots;
    QString m_dataFolder;
    FolderWatch m_folders;
};
