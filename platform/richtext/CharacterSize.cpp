// SPDX-License-Identifier: MIT
#include "CharacterSize.h"

#include <QFont>
#include <QTextCharFormat>

namespace {

constexpr double pointsPerPixel = 72.0 / 96.0;

bool hasSize(const QTextCharFormat& format)
{
    return format.hasProperty(QTextFormat::FontPointSize) || format.hasProperty(QTextFormat::FontPixelSize) ||
           format.hasProperty(QTextFormat::FontSizeAdjustment);
}

} // namespace

double pointSizeOf(const QTextCharFormat& format, const QFont& defaultFont)
{
    const QFont font = hasSize(format) ? format.font() : defaultFont;
    return font.pixelSize() > 0 ? font.pixelSize() * pointsPerPixel : font.pointSizeF();
}
