// SPDX-License-Identifier: MIT
#pragma once

#include "AliasTarget.h"

#include <QByteArrayView>

#include <optional>

/// Bookmark data, the modern form of an alias: as a blob, or as the contents of an alias file. The format was never
/// published by its maker; it is known from genuine files and independent descriptions. Little-endian: tables of
/// contents whose entries point at typed records.
namespace Bookmark {

/// The first bytes of an alias file.
constexpr qsizetype aliasFileMarkSize = 16;

/// True when a file that begins with @p head is an alias file that holds a bookmark.
bool isAliasFile(QByteArrayView head);

/// Reads a blob or the contents of an alias file. Nothing when it is neither, or its path is missing or holds a
/// component that is no file name.
std::optional<AliasTarget> parse(QByteArrayView bytes);

} // namespace Bookmark
