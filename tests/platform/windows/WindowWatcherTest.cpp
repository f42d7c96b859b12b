// SPDX-License-Identifier: MIT
#include <platform/windows/WindowWatcher.h>

#include <QCoreApplication>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>

#include <DataTable.h>
#include <Files.h>
#include <WindowManager.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// Another program, with its connection to the server.
class Program final
{
public:
    Program()
        : m_connection(xcb_connect(nullptr, nullptr), &xcb_disconnect)
        , m_root(xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data->root)
    {
    }

    /// A window that is shown; the classes are the two halves of WM_CLASS.
    xcb_window_t open(const QByteArray& classes = "editor\0Editor"_ba, bool passesManager = false)
    {
        const xcb_window_t window = xcb_generate_id(m_connection.get());
        const quint32 redirect = passesManager ? 1 : 0;
        xcb_create_window(m_connection.get(), XCB_COPY_FROM_PARENT, window, m_root, 0, 0, 50, 50, 0,
            XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &redirect);
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
            quint32(classes.size()), classes.constData());
        if (passesManager) {
            const xcb_atom_t type = atom("_NET_WM_WINDOW_TYPE_POPUP_MENU");
            xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, window, atom("_NET_WM_WINDOW_TYPE"),
                XCB_ATOM_ATOM, 32, 1, &type);
        }
        xcb_map_window(m_connection.get(), window);
        xcb_flush(m_connection.get());
        return window;
    }

    void close(xcb_window_t window)
    {
        xcb_destroy_window(m_connection.get(), window);
        xcb_flush(m_connection.get());
    }

    /// Asks the window manager for something, as a task bar does.
    void ask(xcb_window_t window, const char* message, std::array<quint32, 3> data)
    {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window;
        event.type = atom(message);
        std::ranges::copy(data, std::begin(event.data.data32));
        xcb_send_event(m_connection.get(), 0, m_root,
            XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
            reinterpret_cast<const char*>(&event));
        xcb_flush(m_connection.get());
    }

    xcb_atom_t atom(const char* name)
    {
        const auto request = xcb_intern_atom(m_connection.get(), 0, quint16(qstrlen(name)), name);
        const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&free)> reply(
            xcb_intern_atom_reply(m_connection.get(), request, nullptr), &free);
        return reply->atom;
    }

private:
    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> m_connection;
    xcb_window_t m_root;
};

/// What a watcher tells, a word for each.
class Recorder final
{
public:
    explicit Recorder(WindowWatcher& watcher)
    {
        using Window = SessionWindow;
        QObject::connect(&watcher, &WindowWatcher::opened, &watcher,
            [this](const Window& window) { heard << u"opened "_s + window.windowClass; });
        QObject::connect(&watcher, &WindowWatcher::closed, &watcher,
            [this](const Window& window) { heard << u"closed "_s + window.windowClass; });
        QObject::connect(&watcher, &WindowWatcher::activated, &watcher, [this](const std::optional<Window>& window) {
            heard << u"activated "_s + (window ? window->windowClass : QString());
        });
        QObject::connect(&watcher, &WindowWatcher::changed, &watcher, [this](const Window& before, const Window& now) {
            heard << (now.isHidden != before.isHidden ? (now.isHidden ? u"hidden"_s : u"shown"_s) : QString());
            heard << (now.demandsAttention && !before.demandsAttention ? u"attention"_s : QString());
            heard << (now.desktop != before.desktop ? u"desktop %1"_s.arg(now.desktop.value_or(99)) : QString());
            heard.removeAll(QString());
        });
        QObject::connect(&watcher, &WindowWatcher::popupMapped, &watcher,
            [this](SessionWindow::Type type) { heard << u"up %1"_s.arg(int(type)); });
        QObject::connect(&watcher, &WindowWatcher::popupUnmapped, &watcher,
            [this](SessionWindow::Type type) { heard << u"down %1"_s.arg(int(type)); });
    }

    QStringList heard;
};

/// A watcher that the window manager has begun to tell.
std::unique_ptr<WindowWatcher> managedWatcher(Program& program)
{
    auto watcher = WindowWatcher::ofSession();
    const xcb_window_t window = program.open();
    const bool isTold = QTest::qWaitFor([&] { return watcher->windows().size() == 1; }, 30'000);
    program.close(window);
    return isTold && QTest::qWaitFor([&] { return watcher->windows().empty(); }, 30'000) ? std::move(watcher) : nullptr;
}

} // namespace

class WindowWatcherTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void windowsAreToldAsTheyComeChangeAndGo()
    {
        const WindowManager manager;
        Program program;
        QVERIFY(managedWatcher(program));
        const auto watcher = WindowWatcher::ofSession();
        Recorder recorder(*watcher);
        const auto expect = [&recorder](const QStringList& heard) {
            QTRY_VERIFY2(recorder.heard == heard, qPrintable(recorder.heard.join(u'|')));
            recorder.heard.clear();
        };
        const xcb_window_t editor = program.open();
        expect({u"opened Editor"_s, u"activated Editor"_s});
        const xcb_window_t player = program.open("player\0Player"_ba);
        QTRY_COMPARE(recorder.heard.size(), 2);
        recorder.heard.clear();
        program.ask(editor, "_NET_ACTIVE_WINDOW", {2, 0, 0});
        expect({u"activated Editor"_s});
        QCOMPARE(watcher->active()->id, editor);
        QCOMPARE(watcher->active()->pid, QCoreApplication::applicationPid());
        program.ask(player, "WM_CHANGE_STATE", {3, 0, 0});
        expect({u"hidden"_s});
        program.ask(player, "_NET_WM_STATE", {1, program.atom("_NET_WM_STATE_DEMANDS_ATTENTION"), 0});
        expect({u"attention"_s});
        program.ask(player, "_NET_WM_DESKTOP", {2, 2, 0});
        expect({u"desktop 2"_s});
        QCOMPARE(watcher->windows().size(), 2U);
        const xcb_window_t menu = program.open("menu\0Menu"_ba, true);
        expect({u"up %1"_s.arg(int(SessionWindow::Type::Menu))});
        program.close(menu);
        expect({u"down %1"_s.arg(int(SessionWindow::Type::Menu))});
        program.close(player);
        expect({u"closed Player"_s});
        program.close(editor);
        QTRY_VERIFY(recorder.heard.contains(u"closed Editor"_s));
        QTRY_VERIFY(!watcher->active());
    }

    void windowsThatAManagerFindsAreNoNews()
    {
        const auto watcher = WindowWatcher::ofSession();
        Recorder recorder(*watcher);
        Program program;
        program.open();
        const WindowManager manager;
        QTRY_COMPARE(watcher->windows().size(), 1U);
        QVERIFY(!recorder.heard.contains(u"opened Editor"_s));
    }

    void applicationIsNamedAsUsersChooseIt_data()
    {
        const DataTable<QByteArray, QByteArray, QString> row("entry", "classes", "path");
        const QByteArray own = QCoreApplication::applicationFilePath().toUtf8();
        row("class in the entry", "StartupWMClass=Other", "any\0other"_ba, u"entry.desktop"_s);
        row("name of the entry", "", "any\0Entry"_ba, u"entry.desktop"_s);
        row("program of the entry", "Exec=env A=b " + own + " %F", "any\0Other"_ba, u"entry.desktop"_s);
        row("no entry", "Exec=other", "any\0Other"_ba, QString::fromUtf8(own));
        row("no class", "Exec=other", {}, QString::fromUtf8(own));
    }

    void applicationIsNamedAsUsersChooseIt()
    {
        const auto [entry, classes, path] = currentRow<QByteArray, QByteArray, QString>();
        const QString folder = QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation) + u'/';
        QVERIFY(QDir().mkpath(folder));
        QFile::remove(folder + u"entry.desktop"_s);
        Files::write(folder + u"entry.desktop"_s, "[Desktop Entry]\nType=Application\nName=Entry\n" + entry + '\n');
        WindowApplications applications;
        SessionWindow window{.pid = QCoreApplication::applicationPid()};
        window.instanceName = QString::fromLatin1(classes).section(QChar(0), 0, 0);
        window.windowClass = QString::fromLatin1(classes).section(QChar(0), 1, 1);
        QCOMPARE(applications.pathFor(window), path.startsWith(u'/') ? path : folder + path);
    }

    void endOfTheServerIsTold()
    {
        QProcess server;
        server.setStandardErrorFile(QProcess::nullDevice());
        server.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-nolisten"_s, u"tcp"_s});
        QByteArray number;
        QTRY_VERIFY_WITH_TIMEOUT((number += server.readAllStandardOutput()).endsWith('\n'), 30'000);
        const QByteArray display = qgetenv("DISPLAY");
        qputenv("DISPLAY", ":" + number.trimmed());
        const auto watcher = WindowWatcher::ofSession();
        qputenv("DISPLAY", display);
        bool hasEnded = false;
        connect(watcher.get(), &WindowWatcher::ended, this, [&hasEnded] { hasEnded = true; });
        server.terminate();
        QTRY_VERIFY(hasEnded);
        QTRY_COMPARE(server.state(), QProcess::NotRunning);
        QVERIFY(watcher->windows().empty());
    }
};

QTEST_GUILESS_MAIN(WindowWatcherTest)
#include "WindowWatcherTest.moc"
