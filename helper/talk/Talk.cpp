// SPDX-License-Identifier: MIT
#include "Talk.h"

#include "MediaPlayers.h"

#include <core/Settings.h>
#include <platform/desktop/Text.h>
#include <platform/plist/PropertyList.h>

#include <QLocale>
#include <QTime>

#include <algorithm>
#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// Nobody is idle for longer and comes back to hear of it.
constexpr int mostMinutes = 7 * 24 * 60;
const QString icon = u"com.blipsy.Settings"_s;

} // namespace

Talk::Talk(QObject* parent)
    : QObject(parent)
    , m_trackNotification(icon)
    , m_timeNotification(icon)
{
    connect(&m_idleTime, &IdleTime::reached, this, &Talk::tellTime);
}

Talk::~Talk() = default;

void Talk::readSettings()
{
    m_announce = Announce(std::clamp(Settings::announcerPref.value(), 0, int(Announce::TitleAndArtist)));
    if (m_announce == Announce::Nothing) {
        m_players.reset();
    } else if (!m_players) {
        m_players = std::make_unique<MediaPlayers>();
        connect(m_players.get(), &MediaPlayers::trackStarted, this, &Talk::announceTrack);
    }
    const int minutes =
        std::clamp(PropertyList::Value(Settings::idleTalkIntervalPref.value()).intValue(), 0, mostMinutes);
    // To set the same again would begin a new wait.
    if (std::exchange(m_idleMinutes, minutes) != minutes) {
        m_idleTime.setLimit(std::chrono::minutes(minutes));
    }
}

void Talk::setPaused(bool paused)
{
    m_isPaused = paused;
}

void Talk::announceTrack(const QString& title, const QString& artist)
{
    if (m_isPaused) {
        return;
    }
    const bool isArtistTold = m_announce == Announce::TitleAndArtist && !artist.isEmpty();
    m_trackNotification.show(title, isArtistTold ? artist : QString());
    m_speaker.say(isArtistTold ? title + u", "_s + artist : title);
}

void Talk::tellTime()
{
    if (m_isPaused) {
        return;
    }
    const QString text = Text::tr("It is %1.").arg(QLocale().toString(QTime::currentTime(), QLocale::ShortFormat));
    m_timeNotification.show(text, {});
    m_speaker.say(text);
}
