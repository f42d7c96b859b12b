// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/FourCharCode.h>

#include <QString>

#include <optional>

/// File types of the classic file system, which are four-character codes such as fourCharCode("SFIL"), and aliases.
namespace FileTypes {

/// The type code that the Finder information of the file at @p path gives, links followed: from extended attributes, an
/// AppleDouble companion, AppleSingle or MacBinary. Nothing when the file has none.
std::optional<quint32> hfsTypeCode(const QString& path);

/// How a type code is written in a list of file types for a panel: the four characters between apostrophes, 'SFIL'.
QString fileTypeForHFSTypeCode(quint32 code);

/// True when @p path names an alias file (a symbolic link is not one).
bool isAliasFile(const QString& path);

/// Follows alias files and symbolic links, chains of them included, to the target. The path unchanged when it is
/// neither; nothing when the chain is broken, endless or longer than 32 steps.
std::optional<QString> resolveAliases(const QString& path);

} // namespace FileTypes
