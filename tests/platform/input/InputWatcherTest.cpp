// SPDX-License-Identifier: MIT
#include <platform/input/DeviceInput.h>
#include <platform/input/ServerInput.h>

#include <QProcess>
#include <QTest>

#include <DataTable.h>
#include <fcntl.h>
#include <linux/input.h>
#include <poll.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <array>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

using Key = KeyMeaning::Key;
using Connection = std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)>;

/// What a watcher tells, as one text: characters as they are, other keys by name, `*` after a repetition, `!` for an
/// interruption.
class Recorder final
{
public:
    explicit Recorder(InputWatcher& watcher)
    {
        QObject::connect(&watcher, &InputWatcher::keyPressed, &watcher, [this](const KeyPress& press) {
            heard += nameOf(press.meaning);
            heard += press.isRepeat ? u"*"_s : QString();
        });
        QObject::connect(&watcher, &InputWatcher::buttonPressed, &watcher,
            [this](const ButtonPress& press) { heard += u"[button %1]"_s.arg(int(press.button)); });
        QObject::connect(&watcher, &InputWatcher::wheelTurned, &watcher,
            [this](const WheelTurn& turn) { heard += u"[wheel %1]"_s.arg(int(turn.direction)); });
        QObject::connect(&watcher, &InputWatcher::pointerDragged, &watcher, [this] { heard += u"[drag]"_s; });
        QObject::connect(&watcher, &InputWatcher::capsLockChanged, &watcher,
            [this](bool isOn) { heard += isOn ? u"[caps]"_s : u"[no caps]"_s; });
        QObject::connect(&watcher, &InputWatcher::interrupted, &watcher, [this] { heard += u'!'; });
    }

    QString heard;

private:
    static QString nameOf(const KeyMeaning& meaning)
    {
        if (meaning.isShortcut) {
            return u"[shortcut]"_s;
        }
        switch (meaning.key) {
        case Key::Character:
            return meaning.text.view().toString();
        case Key::Silent:
            return {};
        default:
            return u"[%1%2]"_s.arg(int(meaning.key)).arg(meaning.text.view());
        }
    }
};

QString named(Key key, const QString& text = {})
{
    return u"[%1%2]"_s.arg(int(key)).arg(text);
}

void run(const QString& program, const QString& arguments)
{
    QCOMPARE(QProcess::execute(program, arguments.split(u' ', Qt::SkipEmptyParts)), 0);
}

QByteArray record(quint16 type, quint16 code, qint32 value)
{
    input_event event{};
    event.type = type;
    event.code = code;
    event.value = value;
    return {reinterpret_cast<const char*>(&event), sizeof event};
}

QByteArray down(quint16 code)
{
    return record(EV_KEY, code, 1) + record(EV_SYN, SYN_REPORT, 0);
}

QByteArray up(quint16 code)
{
    return record(EV_KEY, code, 0) + record(EV_SYN, SYN_REPORT, 0);
}

QByteArray stroke(quint16 code)
{
    return down(code) + up(code);
}

/// The writing end of a stream that a watcher follows; closing it is pulling the plug.
class Device final
{
public:
    Device(DeviceInput& watcher, const QString& name)
    {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_NONBLOCK | O_CLOEXEC) != 0) {
            qFatal("no pipe");
        }
        m_end = ends[1];
        watcher.addDevice(name, ends[0]);
    }

    Q_DISABLE_COPY_MOVE(Device)

    ~Device() { close(m_end); }

    void send(const QByteArray& bytes) const
    {
        QCOMPARE(write(m_end, bytes.constData(), size_t(bytes.size())), bytes.size());
    }

    /// Whether nobody reads any more.
    bool isLetGo() const
    {
        pollfd end{m_end, 0, 0};
        return poll(&end, 1, 0) == 1 && (end.revents & POLLERR) != 0;
    }

private:
    int m_end = -1;
};

/// A window that has the focus, as another program's.
class FocusedWindow final
{
public:
    FocusedWindow()
        : m_connection(xcb_connect(nullptr, nullptr), &xcb_disconnect)
        , m_window(xcb_generate_id(m_connection.get()))
    {
        const quint32 events = XCB_EVENT_MASK_KEY_PRESS;
        xcb_create_window(m_connection.get(), XCB_COPY_FROM_PARENT, m_window, root(m_connection.get()), 0, 0, 50, 50, 0,
            XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
        xcb_map_window(m_connection.get(), m_window);
        xcb_set_input_focus(m_connection.get(), XCB_INPUT_FOCUS_POINTER_ROOT, m_window, XCB_CURRENT_TIME);
        free(xcb_get_input_focus_reply(m_connection.get(), xcb_get_input_focus(m_connection.get()), nullptr));
    }

    static xcb_window_t root(xcb_connection_t* connection)
    {
        return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    }

    /// How often a key went down in it so far, repetitions included.
    int presses()
    {
        while (xcb_generic_event_t* const event = xcb_poll_for_event(m_connection.get())) {
            m_presses += (event->response_type & 0x7F) == XCB_KEY_PRESS ? 1 : 0;
            free(event);
        }
        return m_presses;
    }

private:
    Connection m_connection;
    xcb_window_t m_window;
    int m_presses = 0;
};

} // namespace

class InputWatcherTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void cleanup() { run(u"setxkbmap"_s, u"us -option"_s); }

    void serverIsAskedOnlyWhereItHearsAll()
    {
        using Obstacle = InputWatcher::Obstacle;
        auto obstacle = Obstacle::NoDisplay;
        QVERIFY(qobject_cast<ServerInput*>(InputWatcher::ofSession(&obstacle).get()));
        QCOMPARE(obstacle, Obstacle::None);
        qputenv("WAYLAND_DISPLAY", "wayland-0");
        const auto watcher = InputWatcher::ofSession(&obstacle);
        qunsetenv("WAYLAND_DISPLAY");
        QVERIFY(!qobject_cast<ServerInput*>(watcher.get()));
        QCOMPARE(obstacle, watcher ? Obstacle::None : Obstacle::NoReadableDevice);
        const QByteArray display = qgetenv("DISPLAY");
        qunsetenv("DISPLAY");
        const auto withoutDisplay = InputWatcher::ofSession(&obstacle);
        qputenv("DISPLAY", display);
        QCOMPARE(obstacle, withoutDisplay ? Obstacle::None : Obstacle::NoDisplay);
    }

    void whatIsTypedOnTheServerIsHeard_data()
    {
        const DataTable<QString, QString, QString> row("layout", "xdotool", "heard");
        row("text", u"us"_s, u"key b r b space shift+b exclam"_s, u"brb B!"_s);
        row("layout", u"de"_s, u"key 29 34 shift+17"_s, u"zü("_s);
        row("group that is switched for one key", u"us,de"_s, u"key y udiaeresis y"_s, u"yüy"_s);
        row("Caps Lock", u"us"_s, u"key a Caps_Lock a Caps_Lock a"_s, u"a[caps]A[no caps]a"_s);
        row("level of the layout", u"de"_s, u"key ISO_Level3_Shift+24"_s, u"@"_s);
        row("dead key", u"us intl"_s, u"key 48 26"_s, u"é"_s);
        row("dead key that does not fit", u"us intl"_s, u"key 48 24 24"_s, u"q"_s);
        row("Compose", u"us -option compose:ralt"_s, u"key Multi_key o slash o"_s, u"øo"_s);
        row("keys with names", u"us"_s, u"key BackSpace Left Escape Return Tab Delete F5"_s,
            named(Key::BackSpace) + named(Key::Left) + named(Key::Escape, u"\x1B"_s) + named(Key::Return, u"\r"_s) +
                named(Key::Tab, u"\t"_s) + named(Key::Delete) + named(Key::Other));
        row("shortcuts", u"us"_s, u"key ctrl+a alt+b super+c d"_s, u"[shortcut][shortcut][shortcut]d"_s);
        row("buttons and wheel", u"us"_s, u"click 1 click 3 click 2 click 8 click 4 click 5"_s,
            u"[button 0][button 2][button 1][button 3][wheel 0][wheel 1]"_s);
    }

    void whatIsTypedOnTheServerIsHeard()
    {
        const auto [layout, arguments, heard] = currentRow<QString, QString, QString>();
        const auto watcher = ServerInput::create();
        QVERIFY(watcher);
        const Recorder recorder(*watcher);
        run(u"setxkbmap"_s, layout);
        run(u"xdotool"_s, arguments);
        QTRY_COMPARE(recorder.heard, heard);
    }

    void dragIsToldOnce()
    {
        const auto watcher = ServerInput::create();
        const Recorder recorder(*watcher);
        const QString motion = u"mousemove_relative 5 5 "_s.repeated(9);
        run(u"xdotool"_s, motion + u"mousedown 1"_s);
        QTRY_COMPARE(recorder.heard, u"[button 0]"_s);
        run(u"xdotool"_s, motion + u"mouseup 1 "_s + motion + u"key b"_s);
        QTRY_COMPARE(recorder.heard, u"[button 0][drag]b"_s);
    }

    void grabsOfOtherProgramsHideNothing()
    {
        const auto watcher = ServerInput::create();
        const Recorder recorder(*watcher);
        const Connection other(xcb_connect(nullptr, nullptr), &xcb_disconnect);
        const auto grab = xcb_grab_keyboard(other.get(), 1, FocusedWindow::root(other.get()), XCB_CURRENT_TIME,
            XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        const std::unique_ptr<xcb_grab_keyboard_reply_t, decltype(&free)> reply(
            xcb_grab_keyboard_reply(other.get(), grab, nullptr), &free);
        QCOMPARE(int(reply->status), int(XCB_GRAB_STATUS_SUCCESS));
        run(u"xdotool"_s, u"key b r b"_s);
        QTRY_COMPARE(recorder.heard, u"brb"_s);
    }

    void heldKeyIsToldAsOftenAsItTypes()
    {
        const auto watcher = ServerInput::create();
        const Recorder recorder(*watcher);
        FocusedWindow window;
        run(u"xdotool"_s, u"keydown a sleep 1.3 keyup a key b"_s);
        QTRY_VERIFY(recorder.heard.endsWith(u'b'));
        const auto typed = window.presses() - 1;
        QVERIFY(typed > 5);
        // The server and the watcher each repeat by a clock of their own, which a busy machine sets apart.
        QVERIFY2(qAbs(recorder.heard.count(u'a') - typed) <= 4, qPrintable(recorder.heard + QString::number(typed)));
        QCOMPARE(recorder.heard.count(u'*'), recorder.heard.count(u'a') - 1);
    }

    void endOfTheServerIsTold()
    {
        QProcess server;
        server.setStandardErrorFile(QProcess::nullDevice());
        server.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-nolisten"_s, u"tcp"_s});
        QByteArray number;
        QTRY_VERIFY((number += server.readAllStandardOutput()).endsWith('\n'));
        const QByteArray display = qgetenv("DISPLAY");
        qputenv("DISPLAY", ":" + number.trimmed());
        const auto watcher = ServerInput::create();
        qputenv("DISPLAY", display);
        QVERIFY(watcher);
        bool ended = false;
        connect(watcher.get(), &InputWatcher::ended, this, [&ended] { ended = true; });
        server.terminate();
        QTRY_VERIFY(ended);
        QTRY_COMPARE(server.state(), QProcess::NotRunning);
    }

    void streamOfADeviceIsHeard_data()
    {
        const DataTable<QByteArray, int, QString> row("stream", "piece", "heard");
        const QByteArray shifted = down(KEY_LEFTSHIFT) + stroke(KEY_B) + up(KEY_LEFTSHIFT) + stroke(KEY_R);
        row("whole records", shifted, int(shifted.size()), u"Br"_s);
        row("records in pieces", shifted, 7, u"Br"_s);
        row("session's layout", stroke(KEY_APOSTROPHE) + stroke(KEY_E), 24, u"é"_s);
        row("repetition", down(KEY_A) + record(EV_KEY, KEY_A, 2) + record(EV_KEY, KEY_A, 2) + up(KEY_A), 24,
            u"aa*a*"_s);
        row("lost records",
            down(KEY_LEFTSHIFT) + stroke(KEY_A) + record(EV_SYN, SYN_DROPPED, 0) + stroke(KEY_B).left(24) +
                record(EV_SYN, SYN_REPORT, 0) + stroke(KEY_C),
            24, u"A!c"_s);
        row("buttons and wheels",
            stroke(BTN_LEFT) + stroke(BTN_RIGHT) + stroke(BTN_SIDE) + record(EV_REL, REL_WHEEL, -2) +
                record(EV_REL, REL_HWHEEL, 1),
            24, u"[button 0][button 2][button 3][wheel 1][wheel 3]"_s);
        row("drag", down(BTN_LEFT) + record(EV_REL, REL_X, 1).repeated(6) + up(BTN_LEFT), 24, u"[button 0][drag]"_s);
        row("click of a hand that moves",
            down(BTN_LEFT) + record(EV_ABS, ABS_Y, 1).repeated(3) + up(BTN_LEFT) + record(EV_REL, REL_Y, 1).repeated(9),
            24, u"[button 0]"_s);
        row("Caps Lock", stroke(KEY_CAPSLOCK) + stroke(KEY_A) + stroke(KEY_CAPSLOCK) + stroke(KEY_A), 24,
            u"[caps]A[no caps]a"_s);
        row("records of no use",
            record(EV_KEY, KEY_CNT, 1) + record(EV_KEY, KEY_A, 7) + record(EV_KEY, KEY_A, -1) + stroke(BTN_TOUCH) +
                record(EV_ABS, ABS_X, 1) + record(EV_REL, REL_X, 1) + record(0xFFFF, 0xFFFF, -1) + stroke(KEY_Z),
            24, u"z"_s);
    }

    void streamOfADeviceIsHeard()
    {
        const auto [stream, piece, heard] = currentRow<QByteArray, int, QString>();
        run(u"setxkbmap"_s, u"us intl"_s);
        QVERIFY(KeyboardLayout::current());
        QTRY_COMPARE(KeyboardLayout::current()->characterOnKey(0x27), u"´"_s);
        DeviceInput watcher;
        const Recorder recorder(watcher);
        const Device device(watcher, u"keyboard"_s);
        for (qsizetype begin = 0; begin < stream.size(); begin += piece) {
            device.send(stream.mid(begin, piece));
            QCoreApplication::processEvents();
        }
        QTRY_COMPARE(recorder.heard, heard);
    }

    void devicesAreLetGoOfBehindAnotherSession()
    {
        DeviceInput watcher;
        const Recorder recorder(watcher);
        const Device before(watcher, u"keyboard"_s);
        before.send(down(KEY_LEFTSHIFT));
        QCoreApplication::processEvents();
        QVERIFY(!before.isLetGo());
        watcher.setInFront(false);
        QVERIFY(before.isLetGo());
        watcher.setInFront(true);
        const Device after(watcher, u"keyboard"_s);
        after.send(stroke(KEY_A));
        QTRY_VERIFY(recorder.heard.endsWith(u'a'));
    }

    void keyboardsShareTheirModifiers()
    {
        DeviceInput watcher;
        const Recorder recorder(watcher);
        const Device keyboard(watcher, u"keyboard"_s);
        {
            const Device other(watcher, u"other keyboard"_s);
            other.send(down(KEY_LEFTSHIFT));
            QCoreApplication::processEvents();
            keyboard.send(stroke(KEY_A));
            QTRY_COMPARE(recorder.heard, u"A"_s);
        }
        QCoreApplication::processEvents();
        keyboard.send(stroke(KEY_A));
        QTRY_COMPARE(recorder.heard, u"Aa"_s);
    }
};

QTEST_GUILESS_MAIN(InputWatcherTest)
#include "InputWatcherTest.moc"
