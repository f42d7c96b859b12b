// SPDX-License-Identifier: MIT
#pragma once

#include "Result.h"

#include <QByteArray>
#include <QFile>

#include <memory>

/// Reading of files whose path comes from elsewhere, and so may name anything.
namespace RegularFile {

/// Opens the ordinary file at @p path for reading, links followed, without a buffer. A folder, a pipe or a device
/// (which might block for ever) is refused; the reason does not name the path.
Result<std::unique_ptr<QFile>> open(const QString& path);

/// Reads such a file. One of more than @p maximumSize bytes is refused, too.
Result<QByteArray> read(const QString& path, qint64 maximumSize);

} // namespace RegularFile
