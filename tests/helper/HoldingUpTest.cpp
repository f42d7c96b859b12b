// SPDX-License-Identifier: MIT
#include "HelperProgram.h"

#include <core/Changes.h>
#include <core/Settings.h>

#include <QDBusMessage>
#include <QTemporaryDir>

#include <DataTable.h>
#include <Files.h>
#include <ProcessMemory.h>
#include <SoundFixtures.h>
#include <SoundServerControl.h>
#include <SystemBus.h>
#include <WindowManager.h>

using namespace Qt::StringLiterals;
using PropertyList::Array;
using PropertyList::Dictionary;
using SoundServerControl::Recording;

namespace {

bool runShell(const QString& command)
{
    return QProcess::execute(u"sh"_s, {u"-c"_s, command}) == 0;
}

/// Types as fast as the server takes it.
bool type(const QString& text)
{
    return QProcess::execute(u"xdotool"_s, {u"type"_s, u"--delay"_s, u"0"_s, text}) == 0;
}

} // namespace

/// The login manager, as far as it tells of sleep.
class LoginManager final
{
public:
    LoginManager()
        : m_bus(QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS"), u"login"_s))
    {
        m_bus.registerService(u"org.freedesktop.login1"_s);
    }

    ~LoginManager() { QDBusConnection::disconnectFromBus(u"login"_s); }

    Q_DISABLE_COPY_MOVE(LoginManager)

    bool tellSleep()
    {
        QDBusMessage sleep = QDBusMessage::createSignal(
            u"/org/freedesktop/login1"_s, u"org.freedesktop.login1.Manager"_s, u"PrepareForSleep"_s);
        sleep << true;
        return m_bus.send(sleep);
    }

private:
    QDBusConnection m_bus;
};

/// The helper among neighbours that hang, end, begin again and change their minds.
class HoldingUpTest final : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    std::optional<SystemBus> m_systemBus;
    std::optional<LoginManager> m_login;
    WindowManager m_manager;
    QProcess m_front;
    std::unique_ptr<HelperProgram> m_helper;

    QString path(const QString& name) const { return m_folder.filePath(name); }

private Q_SLOTS:

    void initTestCase()
    {
        m_systemBus.emplace();
        m_login.emplace();
        Files::write(path(u"phrase.aif"_s), SoundFixtures::aiff(440, 0.3));
        Files::write(path(u"brief.aif"_s), SoundFixtures::aiff(2500, 0.05));
        Files::write(path(u"event.aif"_s), SoundFixtures::aiff(1000, 2));
        const auto zay =
            Dictionary::create({{PhraseKey::phrase, u"zay"_s}, {PhraseKey::soundFilepath, path(u"phrase.aif"_s)}});
        const auto brief =
            Dictionary::create({{PhraseKey::phrase, u"brief"_s}, {PhraseKey::soundFilepath, path(u"brief.aif"_s)}});
        const auto omw = Dictionary::create({{PhraseKey::phrase, u"omw"_s}, {PhraseKey::plainText, u"On my way."_s}});
        const auto longest = Dictionary::create({{PhraseKey::phrase, QString(40, u'-')}});
        const auto event = [this](const QString& code, const QString& name) {
            return Dictionary::create({{EventKey::event, code}, {EventKey::soundFilepath, path(name)}});
        };
        const auto root = Dictionary::create({{DocumentKey::clippings, Array::create({zay, brief, omw, longest})},
            {DocumentKey::sounds, Array::create({event(u"0"_s, u"brief.aif"_s), event(u"5"_s, u"event.aif"_s)})}});
        Files::write(path(u"test.blipsy"_s), PropertyList::write(root));
        Settings::defaultFilePath.store(path(u"test.blipsy"_s));
        const uint bus = QDBusConnection::sessionBus().interface()->servicePid(u"org.freedesktop.DBus"_s);
        qputenv("SESSION_BUS", QByteArray::number(bus));
        qputenv("SYSTEM_BUS", QByteArray::number(m_systemBus->processId()));
        qputenv("WINDOW_MANAGER", QByteArray::number(m_manager.processId()));
        m_front.start(u"xterm"_s, {u"-T"_s, u"front"_s, u"-e"_s, u"cat"_s});
        QVERIFY(m_front.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(runShell(u"xdotool search --onlyvisible --name '^front$' windowfocus"_s), 20'000);
        qputenv("FRONT", QByteArray::number(m_front.processId()));
        // What is freed is not kept for the sanitizers to look at.
        m_helper = std::make_unique<HelperProgram>(QMap<QString, QString>{
            {u"ASAN_OPTIONS"_s, qEnvironmentVariable("ASAN_OPTIONS") + u":quarantine_size_mb=1"_s}});
        Recording recording;
        QTRY_VERIFY_WITH_TIMEOUT(type(u"zay "_s) && recording.secondsOf(440) > 0.1, 20'000);
    }

    void nextPhraseIsHeard_data()
    {
        const DataTable<QString, QString, QString> row("disturbance", "output", "afterwards");
        const QString speakers = u"speakers"_s;
        const auto stopped = [&](const char* name, const QString& process) {
            row(name, u"kill -STOP "_s + process, speakers, u"kill -CONT "_s + process);
        };
        row("nothing", u":"_s, speakers, u":"_s);
        row("output switched", u"pactl set-default-sink headphones"_s, u"headphones"_s,
            u"pactl set-default-sink speakers"_s);
        row("sound server restarted", {}, speakers, u":"_s);
        row("keyboard layout changed", u"setxkbmap fr"_s, speakers, u"setxkbmap us"_s);
        row("sound server stopped for a while",
            u"s=$(cat $PULSE_RUNTIME_PATH/pid); kill -STOP $s; xdotool type 'zay omw zay '; kill -CONT $s"_s, speakers,
            u":"_s);
        stopped("session bus stopped", u"$SESSION_BUS"_s);
        stopped("system bus stopped", u"$SYSTEM_BUS"_s);
        stopped("window manager stopped", u"$WINDOW_MANAGER"_s);
        stopped("program in front stopped", u"$FRONT"_s);
    }

    void nextPhraseIsHeard()
    {
        const auto [disturbance, output, afterwards] = currentRow<QString, QString, QString>();
        auto recording = std::make_unique<Recording>();
        Changes::tell(NotificationName::playEvent, Dictionary::create({{u"Event"_s, u"5"_s}}));
        QTRY_VERIFY_WITH_TIMEOUT(recording->secondsOf(1000) > 0.1, 20'000);

        QVERIFY(disturbance.isEmpty() ? SoundServerControl::restart() : runShell(disturbance));
        recording = std::make_unique<Recording>(output);
        QVERIFY(recording->isRunning());
        QVERIFY(type(u"omw zay "_s));
        const bool isHeard = QTest::qWaitFor([&] { return recording->secondsOf(440) > 0.2; }, 20'000);
        QVERIFY(runShell(afterwards));
        QVERIFY(isHeard);
    }

    void secretIsForgottenInSleep()
    {
        // Some texts are still on their way to the program in front, and this goes with them.
        QVERIFY(type(u"omw omw "_s));
        const QString secret = u"xylophonezebra"_s;
        const auto remembers = [&] { return ProcessMemory::contains(m_helper->process.processId(), secret); };
        QVERIFY(type(secret));
        QTRY_VERIFY_WITH_TIMEOUT(remembers(), 20'000);
        m_login->tellSleep();
        QTRY_VERIFY_WITH_TIMEOUT(!remembers(), 20'000);
    }

    /// Keys and phrases far faster than anybody types; nothing of it is heard afterwards.
    void memoryStaysFlat()
    {
        constexpr int hundreds = 10;
        const auto used = [this] { return ProcessMemory::residentSize(m_helper->process.processId()); };
        qint64 before = 0;
        for (int hundred = 0; hundred < hundreds; ++hundred) {
            QVERIFY(type(u"brief abc "_s.repeated(100)));
            if (hundred == hundreds / 10) {
                before = used();
            }
        }
        QTRY_VERIFY_WITH_TIMEOUT(!SoundServerControl::hasStreams(), 20'000);
        constexpr qint64 soundsOnTheirWay = 8 << 20;
        QVERIFY2(used() - before < soundsOnTheirWay, qPrintable(u"%1, then %2"_s.arg(before).arg(used())));
        Recording recording;
        QVERIFY(type(u"zay "_s));
        QTRY_VERIFY(recording.secondsOf(440) > 0.2);
    }

    void endsAmongHungNeighbours()
    {
        const QString neighbours = u"$SESSION_BUS $SYSTEM_BUS $WINDOW_MANAGER $FRONT $(cat $PULSE_RUNTIME_PATH/pid)"_s;
        QVERIFY(runShell(u"kill -STOP "_s + neighbours));
        const bool isTyped = type(u"zay omw zay "_s);
        m_helper->process.terminate();
        const bool hasEnded = m_helper->hasEnded();
        QVERIFY(runShell(u"kill -CONT "_s + neighbours));
        QVERIFY(isTyped && hasEnded);
        QCOMPARE(m_helper->process.exitCode(), 0);
    }

    void cleanupTestCase()
    {
        m_helper.reset();
        m_front.kill();
        m_front.waitForFinished();
    }
};

QTEST_GUILESS_MAIN(HoldingUpTest)
#include "HoldingUpTest.moc"
