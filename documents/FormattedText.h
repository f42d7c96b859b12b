// SPDX-License-Identifier: MIT
#pragma once

#include "Importers.h"

/// Turns what other tools keep of formatted text into flattened RTFD.
namespace FormattedText {

/// RTFD stays as it is; where its text is not there or a part is cut short, a trouble tells. Of the non-keyed
/// archiver's archives, attributed strings come over with the formatting that rich text has here, and images as one
/// attachment "my_image.tif" with their TIFF representation.
Importers::Converters converters();

/// Whether flattened RTFD, or plain RTF, can be read to its end without complaint.
bool isWholeRtfd(const QByteArray& rtfd);

} // namespace FormattedText
