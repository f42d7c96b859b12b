// SPDX-License-Identifier: MIT
#pragma once

#include "IdleTime.h"
#include "Speaker.h"

#include <platform/bus/DesktopNotification.h>

#include <QObject>

#include <memory>

class MediaPlayers;

/// What the helper tells the user by itself, as a notification and spoken: the tracks that media players start, as the
/// setting "iTunesAnnouncerPref" says, and the time when the user has been idle for the minutes of
/// "IdleTalkIntervalPref".
class Talk final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Talk)

public:
    /// The values of "iTunesAnnouncerPref".
    enum class Announce { Nothing, Title, TitleAndArtist };

    /// Silent until readSettings().
    explicit Talk(QObject* parent = nullptr);
    ~Talk() override;

    void readSettings();

    /// Nothing is told while the helper is paused.
    void setPaused(bool paused);

private:
    void announceTrack(const QString& title, const QString& artist);
    void tellTime();

    bool m_isPaused = false;
    Announce m_announce = Announce::Nothing;
    int m_idleMinutes = 0;
    std::unique_ptr<MediaPlayers> m_players;
    IdleTime m_idleTime;
    Speaker m_speaker;
    DesktopNotification m_trackNotification;
    DesktopNotification m_timeNotification;
};
