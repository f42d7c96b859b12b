// SPDX-License-Identifier: MIT
#include "Sound.h"

#include "DecodedSoundPlayback.h"
#include "DecodedSounds.h"
#include "SoundDecoder.h"
#include "SoundPlayback.h"
#include "SoundResourceSource.h"
#include "SoundServer.h"

#include <product/Product.h>

#include <QLoggingCategory>
#include <QMetaObject>

#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, PRODUCT_NAME ".sound", QtInfoMsg)

using Opened = Result<std::unique_ptr<SoundSource>>;

void logUnplayable(const QString& name, const QString& reason)
{
    qCInfo(log).noquote() << u"Cannot play %1: %2"_s.arg(name, reason);
}

Opened openFile(const QString& path)
{
    const std::optional<FileStamp> stamp = FileStamp::of(path);
    auto decoder = SoundDecoder::openFile(path);
    return decoder ? Opened(DecodedSounds::remembering(std::move(*decoder), path, stamp)) : Failure{decoder.error()};
}

} // namespace

/// One play of a sound. Shared by the sound and whoever plays it, so that neither waits for the other: the server's
/// thread where the samples are at hand, else a thread of its own, which a slow disk may hold up.
class Sound::Job final : public std::enable_shared_from_this<Job>
{
    Q_DISABLE_COPY_MOVE(Job)

public:
    Job(Sound* sound, std::unique_ptr<SoundSource> opened, float gain)
        : m_sound(sound)
        , m_name(sound->m_name)
        , m_opener(sound->m_opener)
        , m_source(std::move(opened))
        , m_gain(gain)
        , m_playback(gain)
    {
    }

    ~Job() = default;

    /// Begins to play @p decoded, and lets the sound's thread know when that is over; false when that cannot be.
    bool start(const std::shared_ptr<const DecodedSound>& decoded);
    /// Plays, and lets the sound's thread know when that is over.
    void run();
    /// Ends the playing from the sound's thread; the sound hears nothing more of it.
    void abandon();

private:
    /// Whether it was played to its end; why not is in the log.
    bool play();
    bool judge(const Result<SoundPlayback::End>& end) const;
    void report(bool playedToTheEnd);

    std::mutex m_mutex;
    /// Guarded by the mutex; null once abandoned.
    Sound* m_sound;
    const QString m_name;
    const Opener m_opener;
    std::unique_ptr<SoundSource> m_source;
    const float m_gain;
    SoundPlayback m_playback;
    /// Null where a thread plays.
    std::shared_ptr<DecodedSoundPlayback> m_decodedPlayback;
};

bool Sound::Job::start(const std::shared_ptr<const DecodedSound>& decoded)
{
    m_decodedPlayback = std::make_shared<DecodedSoundPlayback>(decoded, m_gain);
    const bool begun = m_decodedPlayback->start(
        [job = shared_from_this()](const Result<SoundPlayback::End>& end) { job->report(job->judge(end)); });
    if (!begun) {
        m_decodedPlayback.reset();
    }
    return begun;
}

void Sound::Job::run()
{
    report(play());
}

void Sound::Job::report(bool playedToTheEnd)
{
    const std::lock_guard lock(m_mutex);
    if (m_sound == nullptr) {
        return;
    }
    const auto report = [sound = m_sound, job = shared_from_this(), playedToTheEnd] {
        sound->jobEnded(job, playedToTheEnd);
    };
    QMetaObject::invokeMethod(m_sound, report, Qt::QueuedConnection);
}

void Sound::Job::abandon()
{
    {
        const std::lock_guard lock(m_mutex);
        m_sound = nullptr;
    }
    if (m_decodedPlayback) {
        m_decodedPlayback->stop();
    } else {
        m_playback.stop();
    }
}

bool Sound::Job::play()
{
    if (!m_source) {
        Opened opened = m_opener();
        if (!opened) {
            logUnplayable(m_name, opened.error());
            return false;
        }
        m_source = std::move(*opened);
    }
    if (!m_source) {
        return true;
    }
    const Result<SoundPlayback::End> end = m_playback.run(*m_source);
    m_source.reset();
    return judge(end);
}

bool Sound::Job::judge(const Result<SoundPlayback::End>& end) const
{
    if (!end) {
        logUnplayable(m_name, end.error());
    }
    return end && *end == SoundPlayback::End::PlayedToTheEnd;
}

std::unique_ptr<Sound> Sound::soundWithContentsOfFile(const QString& path)
{
    const auto open = [path] { return openFile(path); };
    const auto find = [path] { return DecodedSounds::find(path); };
    if (find()) {
        return std::unique_ptr<Sound>(new Sound(path, open, nullptr, find));
    }
    Opened opened = open();
    if (!opened) {
        logUnplayable(path, opened.error());
        return {};
    }
    return std::unique_ptr<Sound>(new Sound(path, open, std::move(*opened), find));
}

std::unique_ptr<Sound> Sound::soundWithResource(const QByteArray& bytes)
{
    return std::unique_ptr<Sound>(new Sound(
        u"a sound resource"_s, [bytes] { return SoundResourceSource::open(bytes); }, nullptr, [] { return nullptr; }));
}

Sound::Sound(QString name, Opener opener, std::unique_ptr<SoundSource> opened, Finder finder)
    : m_name(std::move(name))
    , m_opener(std::move(opener))
    , m_opened(std::move(opened))
    , m_finder(std::move(finder))
{
}

Sound::~Sound()
{
    if (m_job) {
        m_job->abandon();
    }
}

bool Sound::play(float gain)
{
    if (m_job) {
        return false;
    }
    const std::shared_ptr<const DecodedSound> decoded = m_opened ? nullptr : m_finder();
    auto job = std::make_shared<Job>(this, std::move(m_opened), gain);
    if (decoded && job->start(decoded)) {
        m_job = std::move(job);
        return true;
    }
    try {
        // Detached: what it touches is its own job and the server, which is there until the process ends.
        std::thread([job] { job->run(); }).detach();
    } catch (const std::system_error& error) {
        logUnplayable(m_name, QString::fromLocal8Bit(error.what()));
        return false;
    }
    m_job = std::move(job);
    return true;
}

void Sound::stop()
{
    if (!m_job) {
        return;
    }
    std::exchange(m_job, {})->abandon();
    QMetaObject::invokeMethod(
        this, [this] { Q_EMIT finished(false); }, Qt::QueuedConnection);
}

void Sound::prepareOutput()
{
    SoundServer& server = SoundServer::instance();
    const SoundServer::Lock lock(server);
    server.stayConnected();
}

void Sound::jobEnded(const std::shared_ptr<Job>& job, bool playedToTheEnd)
{
    // A job that was stopped may have reported its end just before.
    if (job == m_job) {
        m_job.reset();
        Q_EMIT finished(playedToTheEnd);
    }
}
