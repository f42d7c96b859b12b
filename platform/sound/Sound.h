// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/Result.h>

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

class SoundSource;
struct DecodedSound;

/// A sound made from a file by reference: the file is decoded while it plays, a short one only when it has not been of
/// late. Or one made from a 'snd ' resource.
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

    /// A sound for the 'snd ' resource @p bytes. It is decoded only when it plays; one that cannot be decoded then ends
    /// at once, with a log line that says why.
    static std::unique_ptr<Sound> soundWithResource(const QByteArray& bytes);

    ~Sound() override;

    /// Starts from the beginning, with all samples multiplied by @p gain (0 to 1). False when it is already playing, or
    /// cannot be started for want of resources.
    bool play(float gain = 1);
    /// Falls silent; finished(false) follows from the event loop. Does nothing when it is not playing.
    void stop();

    /// True from play() to stop() or finished().
    bool isPlaying() const { return m_job != nullptr; }

    /// Connects to the sound server ahead of the first play, in the background, and again when it has been restarted.
    static void prepareOutput();

Q_SIGNALS:
    /// The sound has ended: played to its end, or stopped or cut off by a failing server.
    void finished(bool playedToTheEnd);

private:
    class Job;

    /// Opens a sound at its beginning; null for one that is over at once.
    using Opener = std::function<Result<std::unique_ptr<SoundSource>>()>;

    /// Answers the whole sound where it is decoded already, else null.
    using Finder = std::function<std::shared_ptr<const DecodedSound>()>;

    Sound(QString name, Opener opener, std::unique_ptr<SoundSource> opened, Finder finder);

    void jobEnded(const std::shared_ptr<Job>& job, bool playedToTheEnd);

    /// What log lines call it.
    QString m_name;
    Opener m_opener;
    /// For the first play.
    std::unique_ptr<SoundSource> m_opened;
    Finder m_finder;
    std::shared_ptr<Job> m_job;
};
