// SPDX-License-Identifier: MIT
#pragma once

#include "AttributedText.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QStringList>

class QTextDocument;

/// Rich text as RTF: to attributed text, and from text documents.
///
/// Public sources: "Rich Text Format (RTF) Specification", version 1.9.1, and the attachment and color extensions that
/// the platform's own editor writes. Kept are fonts, sizes, bold, italic, underline, strikethrough, colors,
/// backgrounds, baseline, alignment, indents, spacing, tabs, paragraphs, line breaks (U+2028), links and attachments;
/// text that stands in structures that are not known (tables, lists, notes) is kept as text. Reading what was written
/// gives the same document.
namespace Rtf {

/// Whether @p bytes begin as RTF does.
bool isRtf(QByteArrayView bytes);

struct ReadResult
{
    AttributedText text;
    /// What was odd.
    QStringList warnings;
};

/// The text of @p bytes. Its attachments are looked up by name in @p attachments; one that is not there stays as an
/// empty file, so that positions in the text stay right. Reads whatever can be read and never fails for RTF: unbalanced
/// groups, truncation and values out of range cost only themselves. Bytes that are no RTF give an empty text.
ReadResult read(QByteArrayView bytes, const QList<TextAttachment>& attachments);

struct Written
{
    QByteArray rtf;
    /// The files that the text shows, in order of appearance, each once.
    QList<TextAttachment> attachments;
};

/// The text of @p document. A picture that is no attachment yet (pasted as part of a web page) is stored as PNG.
Written write(const QTextDocument& document);

} // namespace Rtf
