// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/FourCharCode.h>

#include <QString>
#include <QStringList>

#include <optional>
#include <string_view>

/// Four-character file types of the classic file system, and aliases.
namespace FileTypes {

using TypeCode = quint32;

/// The type code of four Mac OS Roman characters, for instance `typeCode("SFIL")` = 0x5346494C.
constexpr TypeCode typeCode(std::string_view text)
{
    return fourCharCode(text);
}

/// The type code that the Finder information of the file at @p path gives, links followed: from extended attributes, an
/// AppleDouble companion, AppleSingle or MacBinary. Nothing when the file has none.
std::optional<TypeCode> hfsTypeCode(const QString& path);

/// How a type code is written in a list of file types for a panel: the four characters between apostrophes, 'SFIL'.
QString fileTypeForHFSTypeCode(TypeCode code);

/// True when @p path names an alias file (a symbolic link is not one).
bool isAliasFile(const QString& path);

/// Follows alias files and symbolic links, chains of them included, to the target. The path unchanged when it is
/// neither; nothing when the chain is broken, endless or longer than 32 steps.
std::optional<QString> resolveAliases(const QString& path);

} // namespace FileTypes
