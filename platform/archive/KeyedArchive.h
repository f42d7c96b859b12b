// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <optional>

/// Keyed archives ("NSKeyedArchiver", version 100000: a property list whose "$objects" refer to each other by number),
/// as far as an index set goes, which is what dragged table rows travel as.
namespace KeyedArchive {

/// The binary keyed archive of an index set that holds @p rows. Order and repetitions do not matter; negative numbers
/// are left out.
QByteArray archivedIndexSet(const QList<int>& rows);

/// The ascending members of the archived index set, in the binary or the XML form. Nothing when @p bytes hold none,
/// when it is damaged, when a member exceeds 2^31 - 1 or when there are more than a million.
std::optional<QList<int>> unarchivedIndexSet(QByteArrayView bytes);

} // namespace KeyedArchive
