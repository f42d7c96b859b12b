// SPDX-License-Identifier: MIT
#pragma once

class QFont;
class QTextCharFormat;

/// The size in points of characters of @p format in a document with the default font @p defaultFont. Text from web
/// pages tells it in pixels, of which 96 are an inch, or relative to the default.
double pointSizeOf(const QTextCharFormat& format, const QFont& defaultFont);
