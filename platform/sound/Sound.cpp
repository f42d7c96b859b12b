// SPDX-License-Identifier: MIT
#include "Sound.h"

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
    auto decoder = SoundDecoder::openFile(path);
    return decoder ? Opened(std::move(*decoder)) : Failure{decoder.error()};
}

} // namespace

/// One play of a sound. Shared by the sound and the thread that plays it, so that neither waits for the other: a slow
/// disk may hold that thread up.
class Sound::Job final : public std::enable_shared_from_this<Job>
{
    Q_DISABLE_COPY_MOVE(Job)

public:
    Job(Sound* sound, std::unique_ptr<SoundSource> opened, float gain)
        : m_sound(sound)
        , m_name(sound->m_name)
        , m_opener(sound->m_opener)
        , m_source(std::move(opened))
        , m_playback(gain)
    {
    }

    ~Job() = default;

    /// Plays, and lets the sound's thread know when that is over.
    void run();
    /// Ends the playing from the sound's thread; the sound hears nothing more of it.
    void abandon();

private:
    /// Whether it was played to its end; why not is logged.
    bool play();

    std::mutex m_mutex;
    /// Guarded by the mutex; null once abandoned.
    Sound* m_sound;
    const QString m_name;
    const Opener m_opener;
    std::unique_ptr<SoundSource> m_source;
    SoundPlayback m_playback;
};

void Sound::Job::run()
{
    const bool playedToTheEnd = play();
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
    m_playback.stop();
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
    if (!end) {
        logUnplayable(m_name, end.error());
    }
    m_source.reset();
    return end && *end == SoundPlayback::End::PlayedToTheEnd;
}

std::unique_ptr<Sound> Sound::soundWithContentsOfFile(const QString& path)
{
    Opened opened = openFile(path);
    if (!opened) {
        logUnplayable(path, opened.error());
        return {};
    }
    return std::unique_ptr<Sound>(new Sound(
        path, [path] { return openFile(path); }, std::move(*opened)));
}

std::unique_ptr<Sound> Sound::soundWithResource(const QByteArray& bytes)
{
    return std::unique_ptr<Sound>(new Sound(
        u"a sound resource"_s, [bytes] { return SoundResourceSource::open(bytes); }, nullptr));
}

Sound::Sound(QString name, Opener opener, std::unique_ptr<SoundSource> opened)
    : m_name(std::move(name))
    , m_opener(std::move(opener))
    , m_opened(std::move(opened))
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
    auto job = std::make_shared<Job>(this, std::move(m_opened), gain);
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
