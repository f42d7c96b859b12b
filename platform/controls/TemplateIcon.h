// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QString>

/// The monochrome image file at @p path as an icon whose shape is drawn in the palette's text colour, or in its
/// highlighted text colour where the icon stands in a selected row, so that it is right in light and dark themes.
/// `name@2x.tif` beside `name.tif` serves screens of double resolution. A file that is missing or unreadable gives an
/// empty icon.
QIcon templateIcon(const QString& path);
