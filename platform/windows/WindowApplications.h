// SPDX-License-Identifier: MIT
#pragma once

#include "SessionWindow.h"

#include <platform/bytes/FileStamp.h>

#include <QHash>
#include <QString>

#include <optional>
#include <vector>

/// Finds the application that a window belongs to, as the path by which users choose it: that of its desktop entry.
/// Main thread only.
class WindowApplications final
{
public:
    /// By the window's class, as entries name it ("StartupWMClass") or are named themselves; else by the program of its
    /// process. Where no entry fits, the path of that program; empty when that is not known, either.
    ///
    /// The entries are read when they are first needed, and again when something unknown turns up after their folders
    /// have changed (50 ms for 1,000 entries); else a look-up takes microseconds.
    QString pathFor(const SessionWindow& window);

private:
    using Paths = QHash<QString, QString>;

    QString entryFor(const SessionWindow& window, const QString& program) const;
    bool refresh();

    /// By class names, file names and programs, all in lower case.
    Paths m_byClass;
    Paths m_byName;
    /// A program that several entries start, such as an interpreter, tells nothing: its path is empty.
    Paths m_byProgram;
    std::vector<std::optional<FileStamp>> m_folders;
};
