// SPDX-License-Identifier: MIT
#pragma once

#include "PhraseExport.h"

#include <QString>

/// What scripts have done with documents, without a window. Results go to the standard output stream, and why there are
/// none to the standard error stream, one line. Each answers the program's exit status.
namespace DocumentTasks {

enum Status {
    Done = 0,
    /// Nothing was done: a file cannot be read or written, or is of another kind.
    Failed = 1,
    /// The document can be read, and there is something to say of it.
    Found = 2,
};

/// Tells what the DocumentCheck finds in the document at @p path: a line each, or one JSON object.
Status check(const QString& path, bool asJson);

/// Writes the phrases of the document at @p path to the file @p destination, or to the standard output stream where
/// that is empty.
Status exportPhrases(const QString& path, const QString& destination, PhraseExport::Form form);

/// Converts the file of another tool at @p path into a new document at @p destination, and sums up what has come over:
/// in lines, or as one JSON object. A document that is replaced is kept among the backups.
Status import(const QString& path, const QString& destination, bool asJson);

} // namespace DocumentTasks
