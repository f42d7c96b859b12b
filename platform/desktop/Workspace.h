// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QString>

/// What the desktop does with files on a program's behalf. Nothing here waits for another process. Main thread only.
namespace Workspace {

/// Shows the file or folder at @p path selected in the file manager; falls back to opening its folder where no file
/// manager answers within five seconds. Does nothing for an empty path.
void selectFile(const QString& path);

/// The desktop's icon of the file, folder, `.desktop` entry or `.app` bundle at @p path; the icon of a missing file
/// where there is none. An application without an icon of its own gets the generic one.
QIcon iconForFile(const QString& path);

/// The icon of an application in general; drawn where the icon theme has none.
QIcon genericApplicationIcon();

/// The name that the desktop shows for the file at @p path: the name of a `.desktop` entry in the user's language, the
/// file's name otherwise.
QString displayNameAtPath(const QString& path);

/// Asks for the volume mounted at @p mountPoint to be unmounted and ejected. Does nothing when none is mounted there.
void unmountAndEject(const QString& mountPoint);

} // namespace Workspace
