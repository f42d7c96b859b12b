// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The product's bundle: a folder with the program's module and its resources (`NAME.prefPane/Contents/Resources`).
namespace Bundle {

/// Makes the folder at @p path the bundle, and installs its translations for the languages of the user's locale
/// (`Contents/Resources/<language>.lproj/Localizable.qm`) in the application, which has to exist.
void registerBundle(const QString& path);

/// Absolute path of the bundle folder, without a trailing slash; empty when there is none.
QString path();
/// path() followed by `/Contents/Resources`; empty when there is no bundle.
QString resourcePath();

} // namespace Bundle
