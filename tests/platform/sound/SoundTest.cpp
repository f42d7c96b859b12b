// SPDX-License-Identifier: MIT
#include <platform/sound/Sound.h>
#include <platform/sound/SoundResourcePlayer.h>

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <DataTable.h>
#include <Files.h>
#include <SoundFixtures.h>
#include <SoundServerControl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using SoundServerControl::Recording;

namespace {

constexpr qint64 promptMilliseconds = 100;

} // namespace

class SoundTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
    }

    void cleanup() { SoundServerControl::signalServer(SIGCONT); }

    void playsEveryAcceptedKind_data()
    {
        const DataTable<QString> row("path");
        row("mp3", u"" SOUNDS_FOLDER "/tone440.mp3"_s);
        row("m4a", u"" SOUNDS_FOLDER "/tone440.m4a"_s);
        row("mov", u"" SOUNDS_FOLDER "/tone440.mov"_s);
        row("aif", {});
        row("wav", {});
    }

    void playsEveryAcceptedKind()
    {
        QFETCH(QString, path);
        if (path.isEmpty()) {
            const bool isWave = qstrcmp(QTest::currentDataTag(), "wav") == 0;
            path = file(u"tone"_s, isWave ? SoundFixtures::wave(440, 0.4) : SoundFixtures::aiff(440, 0.4));
        }
        Recording recording;
        QVERIFY(recording.isRunning());
        const auto sound = Sound::soundWithContentsOfFile(path);
        QVERIFY(sound);
        QSignalSpy finished(sound.get(), &Sound::finished);

        QVERIFY(sound->play());
        QVERIFY(!sound->play());
        QVERIFY(finished.wait());
        QCOMPARE(finished.first().first().toBool(), true);
        QVERIFY(!sound->isPlaying() && !SoundServerControl::hasStreams());
        QTRY_VERIFY(recording.secondsOf(440) > 0.36);

        QVERIFY(sound->play());
        QTRY_VERIFY(recording.secondsOf(440) > 0.72);
    }

    void refusesWhatIsNoSound_data()
    {
        const DataTable<QString, QByteArray, qint64> row("name", "content", "size");

        QByteArray noise(100000, Qt::Uninitialized);
        quint32 state = 1;
        for (char& byte : noise) {
            state = state * 1664525 + 1013904223;
            byte = char(state >> 24);
        }
        row("empty", u"empty.wav"_s, {}, 0);
        row("text", u"text.aif"_s, "not a sound at all", -1);
        row("noise called mp3", u"noise.mp3"_s, noise, -1);
        row("noise of 2 GB called mov", u"noise.mov"_s, noise, qint64(2) * 1024 * 1024 * 1024);
        row("2 GB of nothing called mp3", u"zeros.mp3"_s, {}, qint64(2) * 1024 * 1024 * 1024);
        row("header without samples", u"cut.wav"_s, SoundFixtures::wave(440, 1).first(44), -1);
        row("part of a header", u"cut.aif"_s, SoundFixtures::aiff(440, 1).first(20), -1);
        row("folder", u"."_s, {}, -1);
        row("missing", u"missing.aif"_s, {}, -1);
        row("fifo", u"fifo.wav"_s, {}, -1);
    }

    void refusesWhatIsNoSound()
    {
        const auto [name, content, size] = currentRow<QString, QByteArray, qint64>();
        const QString path = m_folder->filePath(name);
        if (!content.isEmpty() || size >= 0) {
            file(name, content);
        }
        QVERIFY(size < 0 || QFile::resize(path, size));
        if (name == "fifo.wav"_L1) {
            QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        }
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!Sound::soundWithContentsOfFile(path));
        QCOMPARE_LT(timer.elapsed(), 3000);
    }

    void overlappingSoundsAreBothHeard()
    {
        Recording recording;
        const auto low = tone(440, 1);
        const auto high = tone(2000, 1);
        low->play();
        high->play();
        QTRY_VERIFY(recording.secondsOf(440) > 0.3 && recording.secondsOf(2000) > 0.3);
        QVERIFY(low->isPlaying() && high->isPlaying());
    }

    void stoppedSoundFallsSilent_data() { plainOrRemembered(); }

    void stoppedSoundFallsSilent()
    {
        QFETCH(bool, isRemembered);
        const auto sound = tone(440, isRemembered ? 1.9 : 10);
        QVERIFY(!isRemembered || isPlayedToItsEnd(*sound));
        Recording recording;
        QSignalSpy finished(sound.get(), &Sound::finished);
        sound->play();
        QTRY_VERIFY(recording.secondsOf(440) > 0.2);
        sound->stop();
        const double heard = recording.secondsOf(440);
        QVERIFY(!sound->isPlaying());
        QVERIFY(finished.wait());
        QCOMPARE(finished.first().first().toBool(), false);

        const auto marker = tone(2000, 1);
        marker->play();
        QTRY_VERIFY(recording.secondsOf(2000) > 0.5);
        QVERIFY(recording.secondsOf(440) < heard + 0.4);
    }

    void destroyedSoundFallsSilent()
    {
        Recording recording;
        auto sound = tone(440, 30);
        sound->play();
        QTRY_VERIFY(recording.secondsOf(440) > 0.2);
        sound.reset();
        QTRY_VERIFY(!SoundServerControl::hasStreams());
    }

    void nextPlayIsHeardAfterTheOutputIsGone_data()
    {
        const DataTable<QStringList> row("command");
        row("default output switched", {u"set-default-sink"_s, u"headphones"_s});
        row("output removed", {u"unload-module"_s, u"0"_s});
        row("server restarted", {});
    }

    void nextPlayIsHeardAfterTheOutputIsGone()
    {
        QFETCH(QStringList, command);
        const auto before = tone(440, 20);
        QVERIFY(before->play());
        QTRY_VERIFY(SoundServerControl::hasStreams());
        QVERIFY(command.isEmpty() ? SoundServerControl::restart() : SoundServerControl::control(command).has_value());
        before->stop();

        Recording recording(command.isEmpty() ? u"speakers"_s : u"headphones"_s);
        QVERIFY(recording.isRunning());
        const auto after = tone(2000, 0.5);
        QVERIFY(after->play());
        QTRY_VERIFY(recording.secondsOf(2000) > 0.3);
        QVERIFY(SoundServerControl::restart());
    }

    void connectionIsThereBeforeTheNextSound()
    {
        const auto isConnected = [] {
            const auto clients = SoundServerControl::control({u"list"_s, u"clients"_s});
            return clients && clients->contains("com.blipsy.prefpanel");
        };
        Sound::prepareOutput();
        QTRY_VERIFY(isConnected());
        QVERIFY(SoundServerControl::restart());
        QTRY_VERIFY(isConnected());
    }

    void replacedFileIsHeardAnew()
    {
        const auto sound = tone(440, 0.3);
        QVERIFY(isPlayedToItsEnd(*sound));
        file(u"440.aif"_s, SoundFixtures::aiff(2000, 0.3));
        Recording recording;
        QVERIFY(sound->play());
        QTRY_VERIFY(recording.secondsOf(2000) > 0.2);
        QCOMPARE_LT(recording.secondsOf(440), 0.1);
    }

    void hungServerKeepsNobodyWaiting_data() { plainOrRemembered(); }

    void hungServerKeepsNobodyWaiting()
    {
        QFETCH(bool, isRemembered);
        const QRegularExpression absence(u"no sound server"_s);
        QTest::ignoreMessage(QtWarningMsg, absence);
        QTest::failOnWarning(absence);
        auto other = tone(2000, 1);
        QVERIFY(!isRemembered || isPlayedToItsEnd(*other));
        const auto playing = tone(440, 30);
        playing->play();
        QTRY_VERIFY(SoundServerControl::hasStreams());
        auto third = tone(1000, 1);
        QSignalSpy finished(other.get(), &Sound::finished);
        QVERIFY(SoundServerControl::signalServer(SIGSTOP));

        QElapsedTimer timer;
        timer.start();
        other->play();
        third->play();
        playing->stop();
        third.reset();
        QCOMPARE_LT(timer.elapsed(), promptMilliseconds);
        QVERIFY(finished.wait(4000));
        QCOMPARE(finished.first().first().toBool(), false);
        QVERIFY(!other->isPlaying());

        timer.start();
        QVERIFY(!SoundResourcePlayer::playSynchronously(SoundFixtures::soundResource(440, 0.5)));
        QCOMPARE_LT(timer.elapsed(), 2000);
        QVERIFY(!SoundResourcePlayer::playSynchronously(SoundFixtures::soundResource(440, 0.5)));
    }

    void resourceIsPlayedToItsEndBeforeTheCallReturns()
    {
        Recording recording;
        QElapsedTimer timer;
        timer.start();
        QVERIFY(SoundResourcePlayer::playSynchronously(SoundFixtures::soundResource(440, 0.5)));
        QCOMPARE_GE(timer.elapsed(), 500);
        QTRY_VERIFY(recording.secondsOf(440) > 0.45);
        QVERIFY(!SoundResourcePlayer::playSynchronously("no resource"));
    }

private:
    /// A short sound is decoded at its first play only, and later ones need no thread.
    static void plainOrRemembered()
    {
        const DataTable<bool> row("isRemembered");
        row("first play", false);
        row("later play", true);
    }

    static bool isPlayedToItsEnd(Sound& sound)
    {
        QSignalSpy finished(&sound, &Sound::finished);
        return sound.play() && finished.wait() && finished.first().first().toBool();
    }

    QString file(const QString& name, const QByteArray& bytes) const
    {
        const QString path = m_folder->filePath(name);
        Files::write(path, bytes);
        return path;
    }

    std::unique_ptr<Sound> tone(double frequency, double seconds) const
    {
        return Sound::soundWithContentsOfFile(
            file(u"%1.aif"_s.arg(frequency), SoundFixtures::aiff(frequency, seconds)));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(SoundTest)

#include "SoundTest.moc"
