// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

/// What stands at the path of a sound: a file, a suitcase (a classic file of 'snd ' resources), or a folder of both.
namespace SoundFiles {

/// Whether the type of the file at @p path says that it is a suitcase.
bool isSuitcase(const QString& path);

struct SuitcaseSound
{
    /// How many sounds the suitcase has.
    int count = 0;
    /// One of them at random.
    std::optional<QByteArray> resource = {};
};

/// A sound of the file at @p path, whatever its type says; nothing of a file that is no suitcase. An alias file is
/// followed. Main thread only.
SuitcaseSound randomInSuitcase(const QString& path);

/// The names of the sounds in @p folder, hidden ones included, in alphabetical order. Suitcases, which need no
/// extension, are sounds @p orSuitcase.
QStringList namesIn(const QString& folder, bool orSuitcase);

/// Why nothing would be heard of the sound at @p path, in words; nothing when something would. Reads no more of a file
/// than it takes to tell, and of a folder only the names. Main thread only.
std::optional<QString> problemWith(const QString& path);

} // namespace SoundFiles
