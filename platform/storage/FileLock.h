// SPDX-License-Identifier: MIT
#pragma once

#include "FileDescriptor.h"

#include <QByteArray>
#include <QString>

#include <chrono>
#include <optional>
#include <system_error>

/// A lock among processes, held on a file of its own by the kernel, which frees it when the process ends, however it
/// ends. So nothing is ever stale, and the file, which is empty, stays where it is. (A QLockFile is told stale by what
/// is in it; killed in the wrong moment a process leaves an empty one, which nobody may touch for half a minute.)
class FileLock final
{
public:
    /// @p path names the lock's file; its folder has to be there.
    explicit FileLock(const QString& path);

    /// Takes the lock, until the object goes; waits for at most @p timeout for a process that has it. Nothing on
    /// success, "resource unavailable, try again" when another process keeps it, else why the file cannot be had.
    /// A file system that knows no locks gives it to everybody.
    std::error_code lockWithin(std::chrono::milliseconds timeout);

private:
    std::error_code lock();

    QByteArray m_path;
    std::optional<FileDescriptor> m_file;
};
