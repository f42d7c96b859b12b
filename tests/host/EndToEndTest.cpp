// SPDX-License-Identifier: MIT
#include "Program.h"

#include <core/BYGlobals.h>
#include <core/SharedNames.h>
#include <platform/plist/PropertyList.h>

#include <QImage>
#include <QTemporaryDir>
#include <QTest>

#include <DataTable.h>
#include <Files.h>
#include <NotificationRecorder.h>
#include <SoundFixtures.h>
#include <SoundServerControl.h>

#include <csignal>

using namespace Qt::StringLiterals;
using PropertyList::Array;
using PropertyList::Dictionary;
using PropertyList::Value;
using SoundServerControl::Recording;

class EndToEndTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    static void initTestCase() { QVERIFY(Accessible::switchOn()); }

    void init()
    {
        Files::write(path(u"alpha.aiff"_s), SoundFixtures::aiff(440, 0.5));
        Files::write(path(u"beta.wav"_s), SoundFixtures::wave(1000, 0.5));
        const auto phrase = [](const QString& text, const QString& sound) {
            return Value(Dictionary::create({{PhraseKey::phrase, text}, {PhraseKey::soundFilepath, sound}}));
        };
        const auto root = Dictionary::create({{DocumentKey::clippings,
            Array::create({phrase(u"alpha"_s, path(u"alpha.aiff"_s)), phrase(u"beta"_s, u""_s)})}});
        Files::write(path(u"test.blipsy"_s), PropertyList::write(root));
    }

    void phraseGetsASoundAndIsHeard()
    {
        Recording recording;
        QVERIFY(recording.isRunning());
        NotificationRecorder bus;
        Program program({u"--document"_s, path(u"test.blipsy"_s)});
        QVERIFY(program.takeFocus());

        QVERIFY(bus.forgetAllPosted());
        QVERIFY(act({u"type"_s, u"b"_s}));
        QVERIFY(act({u"key"_s, u"ctrl+a"_s}));
        QTRY_VERIFY_WITH_TIMEOUT(act({u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"Choose a Sound"_s}), 10'000);
        QVERIFY(act({u"search"_s, u"--name"_s, u"Choose a Sound"_s, u"windowfocus"_s}));
        QVERIFY(act({u"type"_s, path(u"beta.wav"_s)}));
        QVERIFY(act({u"key"_s, u"Return"_s}));
        QTRY_COMPARE_WITH_TIMEOUT(storedSoundOf(u"beta"_s), path(u"beta.wav"_s), 10'000);
        QTRY_VERIFY(bus.names().contains(u"RefreshMenu"_s));

        recording.clear();
        const Accessible table = phrasesOf(program);
        QVERIFY(click(playCell(table, 0)));
        QTRY_VERIFY_WITH_TIMEOUT(recording.secondsOf(440) > 0.4, 10'000);
        QVERIFY(click(playCell(table, 1)));
        QTRY_VERIFY_WITH_TIMEOUT(recording.secondsOf(1000) > 0.4, 10'000);
    }

    void terminationRightAfterAnActionLosesNothing()
    {
        Program program({u"--document"_s, path(u"test.blipsy"_s)});
        QVERIFY(program.takeFocus());
        const Accessible table = phrasesOf(program);
        QVERIFY(!table.cellNamed(0, u"Take the sound away"_s).isNull());
        QVERIFY(click(table.cell(0, 1)));
        QVERIFY(act({u"key"_s, u"ctrl+a"_s}));
        QTRY_VERIFY_WITH_TIMEOUT(table.cellNamed(0, u"Take the sound away"_s).isNull(), 10'000);
        QTest::qSleep(1);
        program.process.terminate();
        QVERIFY(program.process.waitForFinished(20'000));
        QCOMPARE(storedSoundOf(u"alpha"_s), QString());
    }

    void everyControlHasARoleAndAName_data()
    {
        const DataTable<QString, QString> row("role", "name");
        row("Phrases", u"push button"_s, u"Add Phrase"_s);
        row("Events", u"slider"_s, u"Volume"_s);
        row("Applications", u"push button"_s, u"Add…"_s);
        row("Options", u"radio button"_s, u"Phrases with their sound files"_s);
    }

    /// Each row names one control of the tab, which tells that the tab is to be seen.
    void everyControlHasARoleAndAName()
    {
        const auto [role, name] = currentRow<QString, QString>();
        const Program program({u"--document"_s, path(u"test.blipsy"_s)});
        QVERIFY(program.press(u"page tab"_s, QString::fromLatin1(QTest::currentDataTag())));
        QVERIFY(!program.control(role, name).isNull());
        QCOMPARE(program.nameless(), QStringList());
    }

    void stoppedSoundServerHoldsNothingUp()
    {
        Program program({u"--document"_s, path(u"test.blipsy"_s)});
        QVERIFY(program.takeFocus());
        const Accessible table = phrasesOf(program);
        QVERIFY(SoundServerControl::signalServer(SIGSTOP));
        const auto goOn = qScopeGuard([] { SoundServerControl::signalServer(SIGCONT); });
        QVERIFY(click(playCell(table, 0)));
        QVERIFY(click(table.cell(0, 1)));
        QVERIFY(act({u"key"_s, u"ctrl+a"_s}));
        QTRY_COMPARE_WITH_TIMEOUT(storedSoundOf(u"alpha"_s), QString(), 2'000);
    }

    void screenshotsShowEveryTabAndTheDocumentJoinsTheRecentOnes()
    {
        const QString other = path(u"other.blipsy"_s);
        Files::write(other, "");
        BYGlobals::storeSetting(Array::create({other}), Settings::recentFiles.key);
        BYGlobals::storeSetting({}, Settings::menuBuild.key);
        const QString loginItem = QDir::homePath() + u"/.config/autostart/BlipsyMenu.desktop"_s;
        Files::write(loginItem, "the user's");
        Program program({u"--document"_s, path(u"test.blipsy"_s), u"--screenshot"_s, path(u"pictures"_s)});
        QVERIFY(program.process.waitForFinished(30'000));
        QCOMPARE(program.process.exitCode(), 0);
        for (const QString& tab : {u"Phrases"_s, u"Events"_s, u"Applications"_s, u"Options"_s}) {
            QVERIFY(!QImage(path(u"pictures/"_s + tab + u".png"_s)).isNull());
        }
        QCOMPARE(Files::contents(loginItem), "the user's");
        const auto recent = BYGlobals::retrieveDateFromUserDefaults(Settings::recentFiles.key);
        QCOMPARE(recent, Value(Array::create({other, path(u"test.blipsy"_s)})));
    }

    void unreadableDocumentIsLeftAlone_data()
    {
        const DataTable<QByteArray> row("bytes");
        row("garbage", "bplist00\xFF\xFF\xFF");
        row("empty", {});
        row("wrong types", "<plist><dict><key>Clippings</key><string>x</string></dict></plist>");
    }

    void unreadableDocumentIsLeftAlone()
    {
        QFETCH(QByteArray, bytes);
        Files::write(path(u"test.blipsy"_s), bytes);
        Program program({u"--document"_s, path(u"test.blipsy"_s)});
        QVERIFY(program.takeFocus());
        QVERIFY(click(phrasesOf(program)));
        QVERIFY(act({u"key"_s, u"ctrl+v"_s}));
        QCOMPARE(Files::contents(path(u"test.blipsy"_s)), bytes);
        QCOMPARE(program.process.state(), QProcess::Running);
    }

private:
    QString path(const QString& name) const { return m_folder.filePath(name); }

    static Accessible phrasesOf(const Program& program) { return program.control(u"table"_s, u"Phrases"_s); }

    static Accessible playCell(const Accessible& table, int row) { return table.cellNamed(row, u"Play the sound"_s); }

    QString storedSoundOf(const QString& phrase) const
    {
        const Value root = *PropertyList::read(Files::contents(path(u"test.blipsy"_s)));
        const auto phrases = root.dictionary()->value(DocumentKey::clippings).array();
        for (const Value& entry : std::as_const(*phrases)) {
            if (entry.dictionary()->value(PhraseKey::phrase).string() == phrase) {
                return entry.dictionary()->value(PhraseKey::soundFilepath).string();
            }
        }
        return {};
    }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(EndToEndTest)
#include "EndToEndTest.moc"
