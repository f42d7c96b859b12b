// SPDX-License-Identifier: MIT
#pragma once

#include "Result.h"

#include <QByteArray>

/// Reading of whole files whose path comes from elsewhere, and so may name anything.
namespace RegularFile {

/// Reads the ordinary file at @p path, links followed. A folder, a pipe or a device (which might block for ever) and a
/// file of more than @p maximumSize bytes are refused; the reason does not name the path.
Result<QByteArray> read(const QString& path, qint64 maximumSize);

} // namespace RegularFile
