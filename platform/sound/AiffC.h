// SPDX-License-Identifier: MIT
#pragma once

#include "SampledSound.h"

#include <QByteArray>

/// Writer of AIFF-C files (Apple's "Audio Interchange File Format AIFF-C", draft of 1991): big-endian chunks inside a
/// FORM.
namespace AiffC {

/// A whole file around the packets of @p sound, for a media library to decode. As writers of compressed files do, the
/// number of sample frames counts packets.
QByteArray wrap(const SampledSound& sound);

} // namespace AiffC
