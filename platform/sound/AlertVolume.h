// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// The desktop's alert volume: what the sound server stores for streams of the media role "event", which is also what
/// the desktop's own sound settings show.
///
/// A level is 0 (silent) to 0x0100 (full), linear in the server's volume as those settings are. A level word carries it
/// twice, in the low and in the high 16 bits.
namespace AlertVolume {

/// The error code where there is no sound server, or none that stores an alert volume.
constexpr qint16 noHardwareError = -200;

struct Reading
{
    /// 0, or a negative result code; the level word means nothing then.
    qint16 error = 0;
    quint32 level = 0;
};

/// The alert volume now; a muted one reads as 0, and one above full as full.
///
/// Asks the server and waits for its answer, 100 ms at most; one that has not answered is not waited for again until it
/// does. What it told last is the answer then. Why it is asked: docs/decisions/alert-volume.md.
Reading getSysBeepVolume();

/// Sets the alert volume to the low 16 bits of @p level (more than full counts as full) and unmutes it unless they are
/// 0. The device that the server stores with it stays. Does not wait; without a sound server nothing happens.
void setSysBeepVolume(quint32 level);

} // namespace AlertVolume
