// SPDX-License-Identifier: MIT
#include "HelperProgram.h"

#include <core/Changes.h>
#include <core/Settings.h>

#include <QTemporaryDir>

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

namespace {

/// What the pane posts in order to have an event played.
void requestEvent(int code)
{
    Changes::tell(NotificationName::playEvent, Dictionary::create({{u"Event"_s, QString::number(code)}}));
}

} // namespace

/// The helper as the pane sees it: by its service, its notifications and what is heard of it.
class HelperTest final : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    const QString m_document = m_folder.filePath(u"test.blipsy"_s);
    const QString m_sound = m_folder.filePath(u"sound.aif"_s);

    /// Writes a document with event 5, which sounds at 440 Hz.
    void writeDocument(const Value& eventVolume = {}, const Value& generalVolume = {}) const
    {
        const auto event = Dictionary::create({{EventKey::event, u"5"_s}, {EventKey::soundFilepath, m_sound}});
        const auto root = Dictionary::create({{DocumentKey::sounds, Array::create({event})}});
        event->insert(EventKey::volume, eventVolume);
        root->insert(DocumentKey::setVolume, generalVolume);
        Files::write(m_document, PropertyList::write(root));
    }

private Q_SLOTS:

    void init()
    {
        Files::write(m_sound, SoundFixtures::aiff(440, 0.3));
        writeDocument();
        Settings::defaultFilePath.store(m_document);
        Settings::menuBuild.store(0);
    }

    void takesItsLeaveHoweverItIsEnded_data()
    {
        const DataTable<int> row("signal");
        row("told to end", SIGTERM);
        row("interrupted", SIGINT);
        row("left by its session", SIGHUP);
    }

    void takesItsLeaveHoweverItIsEnded()
    {
        QFETCH(int, signal);
        NotificationRecorder heard;
        HelperProgram helper;
        QVERIFY(HelperProgram::awaitRegistered());
        QTRY_COMPARE(Settings::menuBuild.value(), 10012);

        HelperProgram second;
        QVERIFY(second.hasEnded());
        QCOMPARE(second.process.exitCode(), 0);
        QCOMPARE(second.process.readAll().count('\n'), 1);

        QVERIFY(heard.forgetAllPosted());
        ::kill(pid_t(helper.process.processId()), signal);
        QVERIFY(helper.hasEnded());
        QCOMPARE(helper.process.exitCode(), 0);
        QVERIFY(HelperProgram::awaitRegistered(false));
        QTRY_COMPARE(heard.names(), QStringList{NotificationName::byeBye});
    }

    void endsInOneLineWithoutABus()
    {
        HelperProgram helper({{u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nowhere"_s}, {u"QT_QPA_PLATFORM"_s, {}}});
        QVERIFY(helper.hasEnded());
        QCOMPARE(helper.process.exitCode(), 0);
        const QByteArray log = helper.process.readAll();
        QVERIFY2(log.contains("no display can be reached") && log.contains("there is no session bus"), log.constData());
    }

    void eventIsHeardAtItsVolume_data()
    {
        const DataTable<Value, Value, bool> row("ofEvent", "general", "isHeard");
        row("neither is set", {}, {}, true);
        row("both full", u"1"_s, u"1"_s, true);
        row("event low", u"0.1"_s, u"1"_s, false);
        row("general low", u"1"_s, u"0.1"_s, false);
        row("general silent", {}, u"0"_s, false);
    }

    void eventIsHeardAtItsVolume()
    {
        const auto [ofEvent, general, isHeard] = currentRow<Value, Value, bool>();
        Recording recording;
        HelperProgram helper;
        QVERIFY(HelperProgram::awaitRegistered());
        writeDocument(ofEvent, general);
        Changes::tell(NotificationName::refreshMenu);
        recording.clear();
        requestEvent(5);
        QTRY_VERIFY(recording.secondsOf(440, 0.005) > 0.2 || general == Value(u"0"_s));
        QCOMPARE(recording.secondsOf(440) > 0.1, isHeard);
    }

    void lastGoodDocumentStaysInUse_data()
    {
        const DataTable<QString> row("command");
        row("broken", u"echo '<plist><dict>' >$0"_s);
        row("gone", u"rm $0"_s);
        row("a folder", u"rm $0; mkdir $0"_s);
        row("a pipe", u"rm $0; mkfifo $0"_s);
        row("of 300 MB", u"truncate -s 300M $0"_s);
        row("unnamed by broken settings",
            u"echo '<plist><dict>' >$XDG_CONFIG_HOME/blipsy/preferences/com.blipsy.BlipsyMenu.plist"_s);
    }

    void lastGoodDocumentStaysInUse()
    {
        QFETCH(QString, command);
        Recording recording;
        HelperProgram helper;
        QVERIFY(HelperProgram::awaitRegistered());
        requestEvent(5);
        QTRY_VERIFY(recording.secondsOf(440) > 0.2);
        QCOMPARE(QProcess::execute(u"sh"_s, {u"-c"_s, command, m_document}), 0);
        Changes::tell(NotificationName::preferencesChanged);
        recording.clear();
        requestEvent(5);
        QTRY_VERIFY(recording.secondsOf(440) > 0.2);
        QTRY_VERIFY(helper.process.waitForReadyRead(0) || helper.process.bytesAvailable() > 0);
        QVERIFY(helper.process.readAll().contains("cannot read "));
        QCOMPARE(QProcess::execute(u"sh"_s, {u"-c"_s, u"rm -rf $0 $XDG_CONFIG_HOME/blipsy"_s, m_document}), 0);
    }

    void endsWithItsSession()
    {
        QProcess bus;
        bus.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--nopidfile"_s, u"--print-address"_s});
        QVERIFY(bus.waitForReadyRead(20'000));
        const QString address = QString::fromLatin1(bus.readLine().trimmed());
        HelperProgram helper({{u"DBUS_SESSION_BUS_ADDRESS"_s, address}});
        QDBusConnection session = QDBusConnection::connectToBus(address, u"session"_s);
        QTRY_VERIFY_WITH_TIMEOUT(session.interface()->isServiceRegistered(helperIdentifier), 20'000);
        bus.kill();
        QVERIFY(helper.hasEnded());
        QCOMPARE(helper.process.exitCode(), 0);
        QVERIFY(helper.process.readAll().contains("the session bus is gone"));
        bus.waitForFinished();
    }

    void suitcaseHoldsNothingUp()
    {
        const QString suitcase = m_folder.filePath(u"suitcase"_s);
        const QByteArray fork =
            ClassicFixtures::resourceFork({{"snd ", 128, {}, SoundFixtures::soundResource(3000, 4)}});
        Files::write(suitcase, {});
        Files::write(m_folder.filePath(u"._suitcase"_s),
            ClassicFixtures::appleDouble(ClassicFixtures::finderInfo("SFIL"), fork));
        Recording recording;
        HelperProgram helper;
        QVERIFY(HelperProgram::awaitRegistered());
        Changes::tell(NotificationName::playSuitcase, Dictionary::create({{u"filepath"_s, suitcase}}));
        QTRY_VERIFY(recording.secondsOf(3000) > 0.1);
        requestEvent(5);
        QTRY_VERIFY(recording.secondsOf(440) > 0.2);
        QVERIFY(recording.secondsOf(3000) < 3);
    }
};

QTEST_GUILESS_MAIN(HelperTest)
#include "HelperTest.moc"
