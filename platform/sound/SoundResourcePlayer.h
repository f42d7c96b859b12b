// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>

/// Plays 'snd ' resources the classic way: the call returns when the sound has been heard.
namespace SoundResourcePlayer {

/// Plays the resource @p bytes to its end and returns. False, with one log line, when it is no sound that can be
/// played, when there is no sound server, or when the server makes no progress for a second: the caller is never
/// held longer than the sound's own length and that time-out.
bool playSynchronously(QByteArrayView bytes);

} // namespace SoundResourcePlayer
