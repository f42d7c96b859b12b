#pragma once

#include "Importers.h"

class QTextDocument;
struct AttributedText;

/// Turns what other tools keep of formatted text into flattened RTFD.
namespace FormattedText {

/// Reads archives of the non-keyed archiver: attributed strings as they are, images as one attachment "my_image.tif"
/// with their TIFF representation.
Importers::Converters converters();

/// Replaces the content of @p document by @p text with its attachments.
void fill(QTextDocument& document, const AttributedText& text);

} // namespace FormattedText
