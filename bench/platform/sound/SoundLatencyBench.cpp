// SPDX-License-Identifier: MIT
#include <platform/sound/Sound.h>

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <Bench.h>
#include <Files.h>
#include <SoundFixtures.h>
#include <pulse/simple.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

using Clock = std::chrono::steady_clock;

constexpr double targetMilliseconds = 20;
constexpr std::chrono::seconds settlingTime{3};

/// Listens to the monitor of the output and notes when the first sample of a sound arrives.
class Listener final
{
public:
    Listener()
        : m_thread([this](const std::stop_token& stop) { listen(stop); })
    {
    }

    /// Milliseconds from the call of @p play to the first sample; more than any target when there is none.
    template <typename Play>
    double millisecondsToFirstSample(Play play)
    {
        const auto start = Clock::now();
        m_isArmed = true;
        play();
        while (m_isArmed && Clock::now() - start < settlingTime) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return m_isArmed ? 1e6 : std::chrono::duration<double, std::milli>(m_firstSample.load() - start).count();
    }

private:
    void listen(const std::stop_token& stop)
    {
        const pa_sample_spec spec = {PA_SAMPLE_FLOAT32NE, 48000, 1};
        std::array<float, 48> block = {};
        const pa_buffer_attr attributes = {uint32_t(-1), uint32_t(-1), uint32_t(-1), uint32_t(-1), sizeof block};
        pa_simple* stream = pa_simple_new(nullptr, "Listener", PA_STREAM_RECORD, "speakers.monitor", "Listener", &spec,
            nullptr, &attributes, nullptr);
        while (!stop.stop_requested() && pa_simple_read(stream, block.data(), sizeof block, nullptr) >= 0) {
            const bool isHeard = std::any_of(block.begin(), block.end(), [](float sample) { return sample > 0.05F; });
            if (isHeard && m_isArmed) {
                m_firstSample = Clock::now();
                m_isArmed = false;
            }
        }
        pa_simple_free(stream);
    }

    std::atomic<bool> m_isArmed = false;
    std::atomic<Clock::time_point> m_firstSample;
    std::jthread m_thread;
};

double ours(Listener& listener, const QString& path)
{
    std::unique_ptr<Sound> sound;
    const double milliseconds = listener.millisecondsToFirstSample([&] {
        sound = Sound::soundWithContentsOfFile(path);
        sound->play();
    });
    sound.reset();
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    return milliseconds;
}

double peer(Listener& listener, const QString& path)
{
    QProcess process;
    const double milliseconds = listener.millisecondsToFirstSample([&] { process.start(u"paplay"_s, {path}); });
    process.waitForFinished();
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    return milliseconds;
}

void measure(const QString& path)
{
    Listener listener;
    Sound::prepareOutput();
    // The silent output has two seconds in store until it has come down to the listener's latency.
    std::this_thread::sleep_for(settlingTime);

    const double first = ours(listener, path);
    const double peerFirst = peer(listener, path);
    Bench::reportAbsolute("sound-first-play-ms", first, peerFirst, targetMilliseconds);

    double worst = 0;
    double peerWorst = 0;
    for (int play = 0; play < 10; ++play) {
        worst = std::max(worst, ours(listener, path));
        peerWorst = std::max(peerWorst, peer(listener, path));
    }
    Bench::reportAbsolute("sound-later-plays-worst-ms", worst, peerWorst, targetMilliseconds);

    std::this_thread::sleep_for(std::chrono::seconds(10));
    const double afterIdle = ours(listener, path);
    Bench::reportAbsolute("sound-after-idle-ms", afterIdle, peer(listener, path), targetMilliseconds);
}

} // namespace

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("PULSE_RUNTIME_PATH")) {
        ::execl(WITH_SOUND_SERVER, WITH_SOUND_SERVER, argv[0], nullptr);
        qFatal("cannot run %s", WITH_SOUND_SERVER);
    }
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"tone.aif"_s);
    Files::write(path, SoundFixtures::aiff(440, 0.3));
    measure(path);
    return 0;
}
