// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/Result.h>
#include <platform/plist/PropertyList.h>

#include <QString>

/// Documents that are not the one in memory.
namespace NewDocument {

/// Writes @p document at @p path, atomically. What is replaced is kept among the DocumentBackups first; where it cannot
/// be, one log line says so, and it is replaced all the same.
Result<void> write(const PropertyList::DictionaryPointer& document, const QString& path);

/// Keeps the document at @p path among the DocumentBackups. False, after a log line, when there is one and it cannot
/// be kept.
bool keepReplaced(const QString& path);

} // namespace NewDocument
