#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

/// Replaces files in one step, so that a reader sees the old content or the new one, never a mixture.
namespace AtomicFile {

/// Writes @p bytes to a temporary file in the folder of @p path, syncs it and renames it over @p path.
///
/// A symbolic link is followed (its target is replaced, the link stays); the permissions of an existing file are
/// kept, and its owner and group where the system allows; a new file's permissions follow the umask. A file that this
/// user may not write, and anything that is no ordinary file (a folder, a device), is not replaced. On failure the old
/// file is untouched, no temporary file stays behind, and the result is the reason in words that name the path. Nothing
/// on success.
[[nodiscard]] std::optional<QString> write(const QString& path, QByteArrayView bytes);

} // namespace AtomicFile
