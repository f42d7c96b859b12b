// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/// Starts child processes that nobody waits for.
namespace ProcessLauncher {

/// Starts the program at @p path with @p arguments, in the user's home folder (the root folder where there is none),
/// cut loose from this process: it lives on when this one ends and leaves no zombie. False when it could not be started
/// (missing, not executable), with one log line that says why; what becomes of a started program is not watched.
bool launch(const QString& path, const QStringList& arguments = {});

} // namespace ProcessLauncher
