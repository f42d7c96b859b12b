// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/Result.h>

#include <QString>

/// Copies of sounds documents, in `$XDG_STATE_HOME/blipsy/backups/` (by default in `~/.local/state`), which only the
/// user may enter. Each is a document like any other, under a name of its own that begins with the document's name,
/// tells documents of one name apart, and ends with the moment: the copies of one document sort by age.
namespace DocumentBackups {

/// Copies the file at @p documentPath as it is now. A file that is no ordinary one, or of more than @p maximumSize
/// bytes, is not copied. Answers the path of the copy; a failure names the file concerned.
Result<QString> keep(const QString& documentPath, qint64 maximumSize);

} // namespace DocumentBackups
