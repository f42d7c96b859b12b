// SPDX-License-Identifier: MIT
#include <platform/desktop/FrontmostProcess.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <QTest>

#include <DataTable.h>
#include <xcb/xcb.h>

#include <memory>

using namespace Qt::StringLiterals;

/// The test plays the window manager: it makes windows and says which one is active.
class FrontmostProcessTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase()
    {
        QCOMPARE(xcb_connection_has_error(m_connection.get()), 0);
        m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data->root;
    }

    void nameIsThatOfTheActiveWindowsProcess_data()
    {
        const DataTable<qint64, QByteArray, std::optional<QString>> row("process", "windowClass", "name");

        const std::optional<QString> own = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
        row("process", QCoreApplication::applicationPid(), QByteArray("other\0Other", 12), own);
        row("no process number", 0, QByteArray("editor\0Editor", 14), u"Editor"_s);
        row("process elsewhere", 0x7FFFFFFF, QByteArray("a\0Far", 6), u"Far"_s);
        row("nothing known", 0, {}, std::optional<QString>());
    }

    void nameIsThatOfTheActiveWindowsProcess()
    {
        const auto [process, windowClass, name] = currentRow<qint64, QByteArray, std::optional<QString>>();

        const xcb_window_t window = xcb_generate_id(m_connection.get());
        xcb_create_window(m_connection.get(), XCB_COPY_FROM_PARENT, window, m_root, 0, 0, 10, 10, 0,
            XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        if (process != 0) {
            setNumber(window, "_NET_WM_PID", XCB_ATOM_CARDINAL, quint32(process));
        }
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
            quint32(windowClass.size()), windowClass.constData());
        activate(window);
        QCOMPARE(FrontmostProcess::name(), name);
        xcb_destroy_window(m_connection.get(), window);
    }

    void withoutAnActiveWindowThereIsNone()
    {
        activate(0);
        QCOMPARE(FrontmostProcess::name(), std::nullopt);
    }

private:
    xcb_atom_t atom(const char* name)
    {
        const auto cookie = xcb_intern_atom(m_connection.get(), 0, quint16(qstrlen(name)), name);
        const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&free)> reply(
            xcb_intern_atom_reply(m_connection.get(), cookie, nullptr), &free);
        return reply->atom;
    }

    void setNumber(xcb_window_t window, const char* property, xcb_atom_t type, quint32 number)
    {
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, window, atom(property), type, 32, 1, &number);
    }

    void activate(xcb_window_t window)
    {
        setNumber(m_root, "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, window);
        atom("_NET_ACTIVE_WINDOW"); // an answer means that the server has seen what came before
    }

    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> m_connection{
        xcb_connect(nullptr, nullptr), &xcb_disconnect};
    xcb_window_t m_root = 0;
};

QTEST_GUILESS_MAIN(FrontmostProcessTest)

#include "FrontmostProcessTest.moc"
