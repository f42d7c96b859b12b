// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QStandardPaths>
#include <QStringList>

/// What the sources that watch folders of the user agree on.
namespace UserFolders {

/// The folders of these kinds, each once. One that is the home folder itself, which is how the user says that there is
/// none, is left out: every program writes there.
QStringList paths(const QList<QStandardPaths::StandardLocation>& kinds);

/// Whether a file of this name is one that the user does not know about: hidden, a backup, or not complete yet.
bool isTemporary(const QString& name);

/// Whether a program that downloads has given the file this name until it is complete.
bool isPartial(const QString& name);

} // namespace UserFolders
