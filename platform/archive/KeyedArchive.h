// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>

/// Keyed archives ("NSKeyedArchiver", version 100000: a property list whose "$objects" refer to each other by number),
/// as far as an index set goes, which is what dragged table rows travel as.
namespace KeyedArchive {

/// The binary keyed archive of an index set that holds @p rows. Order and repetitions do not matter; negative numbers
/// are left out.
QByteArray archivedIndexSet(const QList<int>& rows);

} // namespace KeyedArchive
