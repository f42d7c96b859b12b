// SPDX-License-Identifier: MIT
#pragma once

#include "SoundSource.h"

#include <platform/bytes/FileStamp.h>

#include <QString>

#include <chrono>
#include <memory>
#include <vector>

/// A short sound, decoded to its end.
struct DecodedSound
{
    SoundFormat format;
    /// Full scale being 1.0, in whole frames.
    std::vector<float> samples;
};

/// Remembers the short sounds that were played last, so that the sound of a key is decoded once and not at each key:
/// 8 MiB of samples in all. For any thread.
namespace DecodedSounds {

/// Longer sounds are not remembered, nor are those of more than 48,000 frames a second.
inline constexpr std::chrono::seconds longest{2};

/// What is remembered of the file at @p path; null when that is nothing, or the file is another one now.
std::shared_ptr<const DecodedSound> find(const QString& path);

/// A source of what @p source has still to hand out, which is all of the file at @p path; once it has handed out
/// everything, that is remembered. @p stamp is the file's before it was opened; nothing is remembered without one.
std::unique_ptr<SoundSource> remembering(
    std::unique_ptr<SoundSource> source, const QString& path, const std::optional<FileStamp>& stamp);

} // namespace DecodedSounds
