// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// A bundle: a folder with a program's module and its resources (`NAME.prefPane/Contents/Resources`).
class Bundle final
{
public:
    /// The bundle that was registered under @p identifier; a bundle with empty paths where there is none.
    static Bundle bundleWithIdentifier(const QString& identifier);

    /// Makes the bundle folder at @p path known under @p identifier and loads its translations
    /// (`Contents/Resources/<language>.lproj/Localizable.qm`) for the languages of the user's locale.
    static void registerBundle(const QString& identifier, const QString& path);

    /// Absolute path of the bundle folder, without a trailing slash.
    QString bundlePath() const;
    /// bundlePath() followed by `/Contents/Resources`.
    QString resourcePath() const;
    /// The text for @p key in the bundle's strings table. Without a translation @p value stands for it, and the key
    /// itself when @p value is empty.
    QString localizedString(const QString& key, const QString& value = {}) const;

private:
    explicit Bundle(QString identifier);

    QString m_identifier;
};
