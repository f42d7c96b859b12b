// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include <memory>

class SoundDecoder;

/// A sound made from a file by reference: the file is decoded while it plays.
///
/// Playing is asynchronous and never waits for the sound server on the calling thread; several sounds play at once.
/// A stream exists only while a sound plays, and is opened on the default output of that moment. A sound that is
/// destroyed while it plays falls silent: whoever lets a sound play to its end keeps it until finished().
class Sound final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Sound)

public:
    /// A sound for the file at @p path, or nothing when it does not exist or holds no audio that can be decoded (one
    /// log line says why). Reads only as much of the file as it takes to tell.
    static std::unique_ptr<Sound> soundWithContentsOfFile(const QString& path);

    ~Sound() override;

    /// Starts from the beginning. False when it is already playing, or cannot be started for want of resources.
    bool play();
    /// Falls silent; finished(false) follows from the event loop. Does nothing when it is not playing.
    void stop();

    /// True from play() to stop() or finished().
    bool isPlaying() const { return m_job != nullptr; }

    /// Connects to the sound server ahead of the first play, in the background.
    static void prepareOutput();

Q_SIGNALS:
    /// The sound has ended: played to its end, or stopped or cut off by a failing server.
    void finished(bool playedToTheEnd);

private:
    class Job;

    Sound(QString path, std::unique_ptr<SoundDecoder> decoder);

    void jobEnded(const std::shared_ptr<Job>& job, bool playedToTheEnd);

    QString m_path;
    /// Opened at the beginning of the file, for the first play.
    std::unique_ptr<SoundDecoder> m_openedDecoder;
    std::shared_ptr<Job> m_job;
};
