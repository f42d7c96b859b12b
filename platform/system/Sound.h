#pragma once

#include <QObject>
#include <QString>

#include <memory>

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
    /// A sound for the file at @p path, or nothing when it does not exist or holds no audio that can be decoded (one log
    /// line says why). Reads only as much of the file as it takes to tell.
    static std::unique_ptr<Sound> soundWithContentsOfFile(const QString& path);

    ~Sound() override;

    /// Starts from the beginning. False when it is already playing.
    bool play();
    /// Stops; finished(false) follows. Does nothing when it is not playing.
    void stop();
    bool isPlaying() const;

    /// Connects to the sound server ahead of the first play, in the background.
    static void prepareOutput();

Q_SIGNALS:
    /// The sound has ended: played to its end, or stopped or cut off by a failing server.
    void finished(bool playedToTheEnd);

private:
    class Playback;

    explicit Sound(QString path);

    QString m_path;
    std::unique_ptr<Playback> m_playback;
};
