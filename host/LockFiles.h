// SPDX-License-Identifier: MIT
#pragma once

/// What the host's lock files have in common.
namespace LockFiles {

/// How old a lock file may get that names nobody, in milliseconds: a program killed between making it and filling it
/// leaves one. The file of a living process is locked in the kernel besides, and is not removed however old it is.
inline constexpr int emptyLockLifetime = 500;

} // namespace LockFiles
