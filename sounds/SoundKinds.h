// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

#include <optional>

/// Which files a phrase or an event can have as its sound.
namespace SoundKinds {

/// What a sound panel offers: the accepted extensions, then the classic type of sound suitcases.
QStringList openPanelTypes();

/// Whether a folder exists at @p path; a link to a folder counts.
bool folderExists(const QString& path);

/// What dropping the file at @p path on a row does: Copy when its extension is accepted as it is spelt (letter case
/// counts) or is missing, as that of a folder is; otherwise None.
Qt::DropAction dropOperation(const std::optional<QString>& path);

} // namespace SoundKinds
