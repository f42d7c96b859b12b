// SPDX-License-Identifier: MIT
#include <core/BYGlobals.h>

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <DataTable.h>
#include <Files.h>
#include <SoundFixtures.h>
#include <SoundServerControl.h>

using namespace Qt::StringLiterals;
using SoundServerControl::Recording;

/// Sounds are told apart by their tones: what is heard, and for how long, shows who was stopped and who played on.
class PlaybackTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        QTRY_VERIFY(!SoundServerControl::hasStreams());
        m_folder = std::make_unique<QTemporaryDir>();
        m_recording = std::make_unique<Recording>();
        QVERIFY(m_folder->isValid() && m_recording->isRunning());
    }

    void folderPicksOnlyPlayableNames_data()
    {
        const DataTable<bool> row("asEvent");
        row("phrase", false);
        row("event", true);
    }

    void folderPicksOnlyPlayableNames()
    {
        QFETCH(bool, asEvent);
        const QString path = folder(u"sounds"_s);
        file(u"sounds/a.aif"_s, 440, 0.15);
        file(u"sounds/.b.aif"_s, 1000, 0.15);
        file(u"sounds/README"_s, 2000, 0.15);
        file(u"sounds/.DS_Store"_s, 2000, 0.15);
        suitcase(u"sounds/suitcase"_s);
        loadEvents(u"7 %1 2"_s.arg(path));
        const auto isEveryKindHeard = [this, asEvent] {
            return m_recording->secondsOf(440) > 0.1 && m_recording->secondsOf(1000) > 0.1 &&
                   (m_recording->secondsOf(3000) > 0.1 || !asEvent);
        };
        for (int play = 0; play < 60 && !isEveryKindHeard(); ++play) {
            if (asEvent) {
                BYGlobals::playSoundForEvent(7);
            } else {
                BYGlobals::playSoundForPhrase(path);
            }
            QTRY_VERIFY(!SoundServerControl::hasStreams());
        }
        QVERIFY(isEveryKindHeard());
        QCOMPARE(m_recording->secondsOf(2000), 0.0);
        QVERIFY(asEvent || m_recording->secondsOf(3000) == 0.0);
    }

    void phraseFilesOverlap()
    {
        const QString low = file(u"low.aif"_s, 440);
        BYGlobals::playSoundForPhrase(low);
        BYGlobals::playSoundForPhrase(file(u"high.aif"_s, 2000));
        QTRY_VERIFY(m_recording->secondsOf(440) > 0.5 && m_recording->secondsOf(2000) > 0.5);
    }

    void phraseFolderStopsThePreviousSound()
    {
        BYGlobals::playSoundForPhrase(file(u"before.aif"_s, 440, 3));
        QTRY_VERIFY(m_recording->secondsOf(440) > 0.1);
        const QString path = folder(u"sounds"_s);
        file(u"sounds/a.aif"_s, 2000);
        BYGlobals::playSoundForPhrase(path);
        QTRY_VERIFY(m_recording->secondsOf(2000) > 0.5);
        QTRY_VERIFY(!SoundServerControl::hasStreams());
        QVERIFY(m_recording->secondsOf(440) < 1.5);
    }

    void folderEventStopsOthersOnlyWhenAsked_data()
    {
        const DataTable<int, bool, bool> row("stopOtherSounds", "isFolder", "otherIsStopped");
        row("folder, asked", 1, true, true);
        row("folder, not asked", 2, true, false);
        row("file, asked", 1, false, false);
    }

    void folderEventStopsOthersOnlyWhenAsked()
    {
        const auto [stopOtherSounds, isFolder, otherIsStopped] = currentRow<int, bool, bool>();
        const QString path = folder(u"sounds"_s);
        const QString sound = file(u"sounds/a.aif"_s, 2000);
        loadEvents(
            u"1 %1 2\n7 %2 %3"_s.arg(file(u"other.aif"_s, 440, 2), isFolder ? path : sound).arg(stopOtherSounds));

        BYGlobals::playSoundForEvent(1);
        QTRY_VERIFY(m_recording->secondsOf(440) > 0.1);
        BYGlobals::playSoundForEvent(7);
        QTRY_VERIFY(m_recording->secondsOf(2000) > 0.5);
        QTRY_VERIFY(!SoundServerControl::hasStreams());
        QCOMPARE(m_recording->secondsOf(440) < 1.5, otherIsStopped);
    }

    void eventsWithoutASoundPlayNothing_data()
    {
        const DataTable<int> row("code");
        row("no entry", 5);
        row("entry without a path", 1);
        row("missing file", 2);
        row("below the table", -1);
        row("behind the table", 80);
    }

    void eventsWithoutASoundPlayNothing()
    {
        QFETCH(int, code);
        const QString sound = file(u"sound.aif"_s, 440);
        loadEvents(u"1  2\n1 %1 2\n2 /missing.aif 2\n-1 %1 2\n80 %1 2"_s.arg(sound));
        BYGlobals::playSoundForEvent(code);
        QVERIFY(!QTest::qWaitFor(&SoundServerControl::hasStreams, 200));
    }

    void suitcasePlaysOneResourceAndCountsAll()
    {
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(playRandomSndFromSuitcase(suitcase(u"suitcase"_s)), 3);
        QCOMPARE_GE(timer.elapsed(), 200);
        QTRY_VERIFY(m_recording->secondsOf(3000) > 0.15);
        QVERIFY(m_recording->secondsOf(3000) < 0.3);
        QCOMPARE(playRandomSndFromSuitcase(file(u"sound.aif"_s, 440)), 0);
    }

private:
    QString file(const QString& name, double frequency, double seconds = 0.6) const
    {
        const QString path = m_folder->filePath(name);
        Files::write(path, SoundFixtures::aiff(frequency, seconds));
        return path;
    }

    QString folder(const QString& name) const
    {
        QDir(m_folder->path()).mkdir(name);
        return m_folder->filePath(name);
    }

    /// A file without data whose AppleDouble companion holds three short 'snd ' resources.
    QString suitcase(const QString& name) const
    {
        const QByteArray sound = SoundFixtures::soundResource(3000, 0.2);
        const QByteArray fork = ClassicFixtures::resourceFork(
            {{"snd ", 128, {}, sound}, {"snd ", 129, {}, sound}, {"snd ", 130, {}, sound}});
        const QString path = m_folder->filePath(name);
        const QFileInfo information(path);
        Files::write(path, {});
        Files::write(information.path() + "/._"_L1 + information.fileName(),
            ClassicFixtures::appleDouble(ClassicFixtures::finderInfo("SFIL"), fork));
        return path;
    }

    /// Loads a document whose events are @p entries, "code path stopOtherSounds" in lines.
    void loadEvents(const QString& entries) const
    {
        QString xml = u"<plist version=\"1.0\"><dict><key>Sounds</key><array>"_s;
        for (const QString& line : entries.split(u'\n')) {
            const QStringList fields = line.split(u' ');
            xml += u"<dict><key>Event</key><string>%1</string><key>SoundFilepath</key><string>%2</string>"
                   u"<key>StopOtherSounds</key><string>%3</string></dict>"_s.arg(fields[0], fields[1], fields[2]);
        }
        const QString path = m_folder->filePath(u"document.blipsy"_s);
        Files::write(path, (xml + u"</array></dict></plist>"_s).toUtf8());
        BYGlobals::setDefaultFilePath(path);
        BYGlobals::fillArray();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Recording> m_recording;
};

QTEST_GUILESS_MAIN(PlaybackTest)

#include "PlaybackTest.moc"
