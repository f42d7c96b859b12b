// SPDX-License-Identifier: MIT
#pragma once

#include "TextAttachment.h"

#include <platform/bytes/Result.h>

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>
#include <QStringList>

class QTextDocument;

/// Rich text with its attached files in one block of bytes: the flattened form of an RTFD folder.
///
/// The form has no published description; it was worked out from documents. Numbers are 32 bits, little-endian:
/// "rtfd", 0, then one node. A node is its type and a body: type 1 is a file (length, bytes), type 3 a folder (count,
/// the names each with its length, the sizes of the nodes, the nodes). The rich text is the file "TXT.rtf"; "." holds
/// the modification times and permissions of the other files.
namespace Rtfd {

/// A wrapper taken apart. A folder inside it stays in its flattened form, as a package.
struct Contents
{
    QList<TextAttachment> files;
    /// The file name that the wrapper itself would like to have; empty where it names none.
    QString preferredName;
    QStringList warnings;
};

/// Whether @p bytes begin as a wrapper does.
bool isWrapper(QByteArrayView bytes);

/// The files of the wrapper, under names that can be no paths, the reserved ones without them. Every length is checked
/// against what is there; a node that is cut short gives what it has. Bytes that are no wrapper give no files.
Contents readWrapper(QByteArrayView bytes);

/// The wrapper of these files; their names must be unique.
QByteArray writeWrapper(const QList<TextAttachment>& files);

/// Replaces the content of @p document by the text in a wrapper, or by bare RTF, as much of it as could be read; tells
/// what was odd or missing. Leaves the document as it is where there is no rich text.
Result<QStringList> read(QByteArrayView bytes, QTextDocument& document);

/// The document with its attachments.
QByteArray write(const QTextDocument& document);

} // namespace Rtfd
