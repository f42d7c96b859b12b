// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/Result.h>

#include <QByteArrayList>
#include <QByteArrayView>
#include <QString>

class QFile;

/// Replaces files in one step, so that a reader sees the old content or the new one, never a mixture. Why QSaveFile is
/// not enough: docs/decisions/atomic-file.md.
namespace AtomicFile {

/// Writes @p bytes to a temporary file in the folder of @p path, syncs it and renames it over @p path.
///
/// A symbolic link is followed (its target is replaced, the link stays); the permissions of an existing file are
/// kept, and its owner and group where the system allows; a new file's permissions follow the umask. A file that this
/// user may not write, and anything that is no ordinary file (a folder, a device), is not replaced. On failure the old
/// file is untouched, no temporary file stays behind, and the reason names the path.
Result<void> write(const QString& path, QByteArrayView bytes);
/// The same with what the @p pieces are, joined.
Result<void> write(const QString& path, const QByteArrayList& pieces);

/// The same with the bytes of @p source from where it stands, which is open for reading; in a file system that can,
/// file and source share their blocks until one of them changes. May be called on any thread, as write().
Result<void> copy(QFile& source, const QString& path);

/// Removes the temporary files that processes killed during write() have left in the folder of @p path (a symbolic link
/// is followed). Files of this user alone, told by their name.
///
/// A file is left alone while a living process writes it: it is locked from its first moment until it has been renamed,
/// and the kernel frees the lock when the process ends, however it ends. So nothing depends on process numbers, which
/// are used again and mean nothing in another container or on another machine. In a network folder the lock is seen
/// by other machines where the server keeps locks; where the file system knows none, nothing is removed.
void removeLeftovers(const QString& path);

} // namespace AtomicFile
