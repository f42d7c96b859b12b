// SPDX-License-Identifier: MIT
#pragma once

#include "ClassicFiles.h"

#include <QString>

#include <optional>

/// The identifiers that folders have been given, remembered across processes.
namespace ClassicFolders {

/// The identifier of the folder at @p path, made and remembered when it is new. Nothing where there is no folder.
std::optional<ClassicFiles::Folder> identify(const QString& path);

/// The path that was identified so; nothing when it never was or there is no folder any more.
std::optional<QString> pathOf(const ClassicFiles::Folder& folder);

/// The number of the inode at @p path (a link itself, not its target); 0 where there is nothing.
quint64 inodeOf(const QString& path);

} // namespace ClassicFolders
