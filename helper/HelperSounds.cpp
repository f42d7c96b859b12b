// SPDX-License-Identifier: MIT
#include "HelperSounds.h"

#include "HelperDocument.h"

#include <core/SoundEvent.h>
#include <platform/sound/AlertVolume.h>
#include <platform/sound/Sound.h>

#include <algorithm>

namespace {

float alertVolume()
{
    constexpr float fullLevel = 0x0100;
    const AlertVolume::Reading reading = AlertVolume::getSysBeepVolume();
    return reading.error == 0 ? float(reading.level & 0xFFFF) / fullLevel : 1.0F;
}

float volumeOf(const SoundEvent& event)
{
    return event.isSystemAlert() ? alertVolume() : HelperSounds::volumeFrom(event->value(EventKey::volume));
}

} // namespace

HelperSounds::HelperSounds(const HelperDocument& document)
    : m_document(document)
    , m_player(SoundPlayer::Suitcases::InTheBackground)
{
}

void HelperSounds::prepare()
{
    Sound::prepareOutput();
}

void HelperSounds::playPhrase(const QString& path)
{
    if (!m_isPaused) {
        m_player.playPhrase(path, m_document.volume());
    }
}

void HelperSounds::playEvent(int code)
{
    const SoundEvent event = SoundEvent::withCode(code, m_document.events());
    if (!m_isPaused && event && event.hasSound() && m_limiter.admit(code, std::chrono::steady_clock::now())) {
        m_player.playEvent(code, m_document.events(), m_document.volume() * volumeOf(event));
    }
}

void HelperSounds::playSuitcase(const QString& path)
{
    if (!m_isPaused) {
        m_player.playSuitcase(path, m_document.volume());
    }
}

float HelperSounds::volumeFrom(const PropertyList::Value& stored)
{
    return stored.isNull() ? 1.0F : std::clamp(float(stored.doubleValue()), 0.0F, 1.0F);
}
