// SPDX-License-Identifier: MIT
#pragma once

#include "FinderInfo.h"
#include "ResourceFork.h"

#include <QString>

#include <optional>

/// Finds what classic files carry besides their data, the resource fork and the Finder information, wherever a mounted
/// volume, a file server or an archive has put it.
///
/// For a regular file (links followed) it looks, in this order, at named forks, extended attributes, AppleDouble
/// companions beside the file, the file itself (AppleSingle, MacBinary, or a plain resource fork), and resource files
/// beside it. Nothing else is ever opened: no folders, devices or pipes, and no companion that is a symbolic link. Only
/// headers and the fork itself are read, so the size of the file does not matter; a fork over 64 MiB is refused.
namespace ForkLocator {

struct LocatedFork
{
    ResourceFork fork;
    /// The file that holds the bytes of the fork: the file itself or a companion.
    QString container;
};

struct ForkSearch
{
    /// The first fork with a resource in it, else the first empty one.
    std::optional<LocatedFork> found;
    /// Tells of a fork that should be there but cannot be read; logged already. Empty where there was none.
    QString damage;
};

ForkSearch resourceFork(const QString& path);

/// The first Finder information that says anything; nothing where there is none.
std::optional<FinderInfo> finderInfo(const QString& path);

} // namespace ForkLocator
