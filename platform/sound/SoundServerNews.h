// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include <memory>

/// What happens at the sound server: the volume of the default output, head phones, and the event sounds that programs
/// play. Told by the server (a subscription); nothing is asked for at intervals. What a server begins with is no news.
///
/// Where there is no server it is silent until there is one again.
class SoundServerNews final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SoundServerNews)

public:
    /// Not more than one at a time, since the server's library knows only one subscriber.
    explicit SoundServerNews(QObject* parent);
    ~SoundServerNews() override;

    void start();

Q_SIGNALS:
    /// The volume of the default output, or whether it is muted. A change of the default output is none.
    void volumeChanged();
    void headphonesPlugged(bool isPlugged);
    /// A program has begun to play the event sound of this name (public source: freedesktop.org Sound Naming
    /// Specification).
    void eventSoundPlayed(const QString& name);

private:
    class Listener;

    /// Shared with the library's thread, to which it belongs.
    std::shared_ptr<Listener> m_listener;
};
