// SPDX-License-Identifier: MIT
#pragma once

#include "EventLimiter.h"

#include <core/SoundPlayer.h>
#include <platform/plist/PropertyList.h>

#include <QString>

class HelperDocument;

/// What is heard of the helper: the sounds of phrases at the document's general volume, and those of events at theirs,
/// as a part of it. Nothing here waits for a sound.
class HelperSounds final
{
public:
    /// @p document stays its owner's and outlives this.
    explicit HelperSounds(const HelperDocument& document);

    /// Connects to the sound server ahead of the first sound.
    static void prepare();

    /// While it is paused nothing is played; what plays already plays to its end.
    void setPaused(bool paused) { m_isPaused = paused; }

    /// Plays the file, the suitcase or the folder at @p path.
    void playPhrase(const QString& path);
    /// Plays the sound of the event with this code, unless too many of them have been played just now (see
    /// EventLimiter). The system alert is as loud as the desktop has it.
    void playEvent(int code);
    /// Plays a sound out of the suitcase at @p path; nothing where it is none.
    void playSuitcase(const QString& path);

    /// A volume as the document stores it, held to 0 … 1; full where nobody has set one, and 0 for what is no number.
    static float volumeFrom(const PropertyList::Value& stored);

private:
    const HelperDocument& m_document;
    SoundPlayer m_player;
    EventLimiter m_limiter;
    bool m_isPaused = false;
};
