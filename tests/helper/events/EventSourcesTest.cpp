// SPDX-License-Identifier: MIT
#include <helper/SessionFront.h>
#include <helper/events/ClockSource.h>
#include <helper/events/EventSources.h>
#include <platform/input/InputWatcher.h>
#include <platform/windows/WindowWatcher.h>

#include <QDir>
#include <QProcess>
#include <QTest>

#include <DataTable.h>
#include <SystemBus.h>

#include <memory>
#include <optional>

using namespace Qt::StringLiterals;
using Key = KeyMeaning::Key;

namespace {

/// A keyboard and a mouse, played by the test.
class Hand final : public InputWatcher
{
public:
    void forget() override {}

    void press(Key key, const QByteArray& text = {}, bool isShortcut = false, bool isRepeat = false)
    {
        Q_EMIT keyPressed({{key, isShortcut, KeyText(text)}, 0, isRepeat});
    }

    void click(ButtonPress::Button button, InputTime time) { Q_EMIT buttonPressed({button, time}); }

    void turn(WheelTurn::Direction direction) { Q_EMIT wheelTurned({direction, 0}); }
};

} // namespace

/// Fires what a desktop can fire, and listens to the sources of events.
class EventSourcesTest final : public QObject
{
    Q_OBJECT

private:
    std::optional<SystemBus> m_bus;
    QProcess m_services;
    Hand m_hand;
    std::unique_ptr<WindowWatcher> m_windows;
    std::unique_ptr<EventSources> m_sources;
    QList<int> m_heard;

    /// Has the services run a statement, and waits until they have.
    bool fire(const QString& statement)
    {
        m_services.write(statement.toUtf8() + '\n');
        return awaitServices();
    }

    bool awaitServices()
    {
        while (!m_services.canReadLine()) {
            if (!m_services.waitForReadyRead(30'000)) {
                return false;
            }
        }
        return m_services.readLine() == "done\n";
    }

private Q_SLOTS:

    void initTestCase()
    {
        m_bus.emplace();
        qputenv("XDG_SESSION_ID", "c1");
        for (const auto& folder : {u"Documents"_s, u"Downloads"_s, u"Pictures"_s, u".local/share"_s}) {
            QVERIFY(QDir::home().mkpath(folder));
        }
        m_services.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_services.start(u"/usr/bin/python3"_s, {QStringLiteral(SERVICES)});
        QVERIFY(awaitServices());
        QVERIFY(fire(u"start(['xev'])"_s));
        m_windows = WindowWatcher::ofSession();
        QTRY_VERIFY_WITH_TIMEOUT(m_windows && m_windows->windows().size() == 1, 20'000);
        m_sources = std::make_unique<EventSources>(&m_hand, m_windows.get(), nullptr);
        connect(m_sources.get(), &EventSources::happened, this, [this](int code) { m_heard << code; });
        m_sources->start();
    }

    void cleanupTestCase()
    {
        m_services.closeWriteChannel();
        QVERIFY(m_services.waitForFinished());
    }

    void init() { m_heard.clear(); }

    /// The session of the mock has begun just now; adapter, battery, network, volume and window are there already.
    void onlyTheLogInIsNewAtTheStart()
    {
        QTRY_VERIFY_WITH_TIMEOUT(!m_heard.isEmpty(), 20'000);
        QCOMPARE(m_heard, QList<int>{29});
    }

    void everySourceIsHeard_data()
    {
        const DataTable<QString, int> row("statement", "code");
        row("network connected", u"network.SetGlobalConnectionState(dbus.UInt32(70))"_s, 64);
        row("network disconnected", u"network.SetGlobalConnectionState(dbus.UInt32(20))"_s, 65);
        row("adapter connected", u"power.UpdateProperties(POWER, {'OnBattery': False})"_s, 72);
        row("adapter disconnected", u"power.UpdateProperties(POWER, {'OnBattery': True})"_s, 73);
        const QString battery = u"battery.UpdateProperties(POWER + '.Device', {'%1': dbus.UInt32(%2)})"_s;
        row("battery low", battery.arg(u"WarningLevel"_s, u"3"_s), 74);
        row("battery critical", battery.arg(u"WarningLevel"_s, u"4"_s), 75);
        row("battery full", battery.arg(u"State"_s, u"4"_s), 76);
        const QString session = u"session.UpdateProperties(LOGIN + '.Session', {'%1': %2});"_s;
        row("locked", u"session.EmitSignal(LOGIN + '.Session', 'Lock', '', [])"_s, 31);
        row("unlocked", session.arg(u"LockedHint"_s, u"True"_s) + session.arg(u"LockedHint"_s, u"False"_s), 32);
        row("user switched", session.arg(u"Active"_s, u"False"_s), 37);
        const QString manager = u"login.EmitSignal(LOGIN + '.Manager', '%1', 'b', [%2])"_s;
        row("asleep", manager.arg(u"PrepareForSleep"_s, u"True"_s), 35);
        row("awake", manager.arg(u"PrepareForSleep"_s, u"False"_s), 36);
        row("log out", manager.arg(u"PrepareForShutdown"_s, u"True"_s), 30);
        const QString saver = u"saver.EmitSignal('org.gnome.ScreenSaver', 'ActiveChanged', 'b', [%1])"_s;
        row("screen saver started", saver.arg(u"True"_s), 33);
        row("screen saver stopped", saver.arg(u"False"_s), 34);
        row("disk inserted",
            u"disks.EmitSignal(OBJECTS, 'InterfacesAdded', 'oa{sa{sv}}', [DISK, {DISKS + '.Block': "
            "{'HintSystem': False, 'HintIgnore': False}, DISKS + '.Filesystem': {'Size': 1}}])"_s,
            53);
        const QString mount = u"disk.UpdateProperties(DISKS + '.Filesystem', {'MountPoints': "
                              "dbus.Array([%1], signature='ay')})"_s;
        row("disk unmounted", mount.arg(QString()), 54);
        row("disk mounted again", mount.arg(u"dbus.ByteArray(b'/media/disk')"_s), 53);
        row("disk pulled out",
            u"disks.EmitSignal(OBJECTS, 'InterfacesRemoved', 'oas', [DISK, [DISKS + '.Filesystem']])"_s, 54);
        row("printing started", u"job('JobState', 5)"_s, 59);
        row("printing finished", u"job('JobCompleted', 9)"_s, 60);
        row("message received", u"notify('im.received')"_s, 66);
        row("mail received", u"notify('email.arrived')"_s, 68);
        row("call received", u"notify('call.incoming')"_s, 70);
        row("call ended", u"notify('call.ended')"_s, 71);
        row("error reported", u"notify('', 2)"_s, 38);
        row("file copied", u"run('echo a > ~/Documents/letter')"_s, 46);
        row("file saved", u"run('echo b >> ~/Documents/letter')"_s, 48);
        row("file saved by renaming",
            u"run('echo c > ~/Documents/.letter; mv ~/Documents/.letter ~/Documents/letter')"_s, 48);
        row("file renamed", u"run('mv ~/Documents/letter ~/Documents/post')"_s, 47);
        row("first file trashed",
            u"run('mkdir ~/new ~/new/files; echo > ~/new/files/post; mv ~/new ~/.local/share/Trash')"_s, 44);
        row("file trashed", u"run('mktemp -p ~/.local/share/Trash/files')"_s, 44);
        row("trash emptied", u"run('rm ~/.local/share/Trash/files/*')"_s, 45);
        row("download started", u"run('echo > ~/Downloads/picture.part')"_s, 52);
        row("download finished", u"run('mv ~/Downloads/picture.part ~/Downloads/picture')"_s, 51);
        row("screen captured", u"run('mkdir -p ~/Pictures/Screenshots; echo > ~/Pictures/Screenshots/picture')"_s, 61);
        row("file opened", u"run('echo > ~/.recent; mv ~/.recent ~/.local/share/recently-used.xbel')"_s, 49);
        row("volume", u"run('pactl set-sink-volume speakers -5%')"_s, 62);
        row("head phones in",
            u"jack = run('pactl load-module module-null-sink sink_properties=device.form_factor=headphone')"_s, 57);
        row("head phones out", u"run('pactl unload-module ' + jack)"_s, 58);
        row("message sent", u"play('message-sent-instant')"_s, 67);
        row("mail sent", u"play('message-sent-email')"_s, 69);
        row("question", u"play('dialog-question')"_s, 39);
        row("menu item", u"play('menu-click')"_s, 43);
        row("bell", u"run('xkbbell')"_s, 28);
        row("window opened", u"start(['xev'])"_s, 23);
        row("application opened", u"run('cp /usr/bin/xev ~/other'); start([run('echo ~/other')])"_s, 16);
        row("brought to the front", u"windows('windowactivate %1')"_s, 17);
        row("minimized", u"windows('windowminimize %1')"_s, 25);
        row("hidden", u"windows('windowminimize %@')"_s, 18);
        row("restored", u"windows('windowactivate %1')"_s, 26);
        row("other workspace", u"windows('set_desktop_for_window %1 1')"_s, 27);
        row("window closed", u"servers[-2].kill()"_s, 24);
        row("application quit", u"servers[-1].kill()"_s, 19);
    }

    void everySourceIsHeard()
    {
        const auto [statement, code] = currentRow<QString, int>();
        // What is fired while a source is still asking its service is lost, as it is on a desktop.
        for (int tries = 0; tries < 20 && !m_heard.contains(code); ++tries) {
            QVERIFY(fire(statement));
            static_cast<void>(QTest::qWaitFor([this, awaited = code] { return m_heard.contains(awaited); }, 1000));
        }
        QVERIFY2(m_heard.contains(code), qPrintable(QDebug::toString(m_heard)));
    }

    void lockedSessionIsTold_data()
    {
        const DataTable<QString, QString> row("lock", "unlock");
        const QString hint = u"session.UpdateProperties(LOGIN + '.Session', {'LockedHint': %1})"_s;
        row("login manager", hint.arg(u"True"_s), hint.arg(u"False"_s));
        row("screen saver that ends", u"saver.EmitSignal('org.gnome.ScreenSaver', 'ActiveChanged', 'b', [True])"_s,
            u"servers[4].kill()"_s);
    }

    void lockedSessionIsTold()
    {
        const auto [lock, unlock] = currentRow<QString, QString>();
        SessionFront front;
        bool isLocked = false;
        connect(&front, &SessionFront::locked, this, [&isLocked](bool now) { isLocked = now; });
        front.follow();
        QTRY_VERIFY_WITH_TIMEOUT(isLocked || (fire(lock) && isLocked), 20'000);
        QVERIFY(fire(unlock));
        QTRY_VERIFY_WITH_TIMEOUT(!isLocked, 20'000);
    }

    void eachPressIsOneEvent()
    {
        m_hand.press(Key::Character, "a");
        m_hand.press(Key::Character, "a", false, true);
        m_hand.press(Key::Character, "c", true);
        m_hand.press(Key::Silent);
        m_hand.press(Key::Character, " ");
        for (const Key key : {Key::Return, Key::Tab, Key::BackSpace, Key::Escape, Key::Left, Key::Other}) {
            m_hand.press(key);
        }
        Q_EMIT m_hand.capsLockChanged(true);
        Q_EMIT m_hand.capsLockChanged(false);
        Q_EMIT m_hand.pointerDragged();
        QCOMPARE(m_heard, (QList<int>{0, 9, 2, 1, 3, 4, 5, 6, 0, 7, 8, 13}));
    }

    void twoQuickClicksAreOneDoubleClick()
    {
        using Button = ButtonPress::Button;
        // The clock of the source begins anew in between.
        m_hand.click(Button::Left, InputTime(-50));
        m_hand.click(Button::Left, 50);
        m_hand.click(Button::Left, 100);
        m_hand.click(Button::Left, 5000);
        m_hand.click(Button::Right, 5010);
        m_hand.click(Button::Left, 5020);
        m_hand.turn(WheelTurn::Direction::Up);
        m_hand.turn(WheelTurn::Direction::Left);
        m_hand.turn(WheelTurn::Direction::Down);
        QCOMPARE(m_heard, (QList<int>{10, 11, 10, 10, 12, 10, 14, 15}));
    }

    void quartersAreTold_data()
    {
        const DataTable<QTime, int> row("time", "code");
        row("full", QTime(0, 0), 79);
        row("half", QTime(13, 30, 1), 78);
        row("quarter", QTime(13, 45, 29), 77);
        row("slept through", QTime(13, 15, 31), -1);
    }

    void quartersAreTold()
    {
        const auto [time, code] = currentRow<QTime, int>();
        const std::optional<EventCode> event = ClockSource::eventAt(time);
        QCOMPARE(event ? int(*event) : -1, code);
    }

    void clockWakesAtTheQuarter()
    {
        // A clock by which it is 100 ms to ten.
        const qint64 shift = QDateTime(QDate(2026, 1, 1), QTime(9, 59, 59, 900)).toMSecsSinceEpoch() -
                             QDateTime::currentMSecsSinceEpoch();
        ClockSource clock(nullptr, [shift] { return QDateTime::currentMSecsSinceEpoch() + shift; });
        QList<int> told;
        connect(&clock, &EventSource::happened, this, [&told](int code) { told << code; });
        clock.start();
        QTRY_COMPARE(told, QList<int>{79});
    }
};

QTEST_MAIN(EventSourcesTest)
#include "EventSourcesTest.moc"
