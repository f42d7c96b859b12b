// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

#include <QByteArray>

/// The phrases of a document for other programs, in UTF-8.
namespace PhraseExport {

enum class Form {
    /// A line for each phrase under a line of titles, with CRLF at the end of each (RFC 4180).
    Csv,
    /// For people: each phrase on a line, its text below it, indented by a tab.
    Text,
    /// An array of objects.
    Json,
};

/// The entries of @p phrases, in their order; what is no entry is left out. A null list has none.
QByteArray of(const PropertyList::ArrayPointer& phrases, Form form);

} // namespace PhraseExport
