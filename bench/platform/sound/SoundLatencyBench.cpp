// SPDX-License-Identifier: MIT
#include <platform/sound/Sound.h>

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <Bench.h>
#include <Files.h>
#include <Listener.h>
#include <SoundFixtures.h>
#include <unistd.h>

#include <thread>

using namespace Qt::StringLiterals;

namespace {

constexpr double targetMilliseconds = 20;

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
    std::this_thread::sleep_for(Listener::patience);

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
