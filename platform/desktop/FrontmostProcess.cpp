// SPDX-License-Identifier: MIT
#include "FrontmostProcess.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

struct Free
{
    void operator()(void* memory) const { std::free(memory); }
};

/// A connection of our own, so that a program without windows can ask too.
class WindowManager final
{
public:
    WindowManager()
        : m_connection(xcb_connect(nullptr, nullptr), &xcb_disconnect)
    {
    }

    bool isConnected() const { return xcb_connection_has_error(m_connection.get()) == 0; }

    /// 0 where there is none.
    xcb_window_t activeWindow() const
    {
        const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data;
        return screen ? number(screen->root, "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW) : 0;
    }

    quint32 number(xcb_window_t window, const char* property, xcb_atom_t type) const
    {
        const QByteArray bytes = value(window, atom(property), type);
        return bytes.size() == sizeof(quint32) ? *reinterpret_cast<const quint32*>(bytes.constData()) : 0;
    }

    /// The second of the two strings of WM_CLASS: the program's name with a capital letter.
    QString windowClass(xcb_window_t window) const
    {
        const QList<QByteArray> names = value(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING).split('\0');
        return names.size() > 1 ? QString::fromLatin1(names.at(1)) : QString();
    }

private:
    xcb_atom_t atom(const char* name) const
    {
        const auto cookie = xcb_intern_atom(m_connection.get(), 1, quint16(qstrlen(name)), name);
        const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(
            xcb_intern_atom_reply(m_connection.get(), cookie, nullptr));
        return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    }

    QByteArray value(xcb_window_t window, xcb_atom_t property, xcb_atom_t type) const
    {
        constexpr quint32 longestInWords = 256;
        const auto cookie = xcb_get_property(m_connection.get(), 0, window, property, type, 0, longestInWords);
        const std::unique_ptr<xcb_get_property_reply_t, Free> reply(
            xcb_get_property_reply(m_connection.get(), cookie, nullptr));
        if (!reply) {
            return {};
        }
        return {
            static_cast<const char*>(xcb_get_property_value(reply.get())), xcb_get_property_value_length(reply.get())};
    }

    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> m_connection;
};

QString executableName(quint32 process)
{
    const QString folder = u"/proc/%1"_s.arg(process);
    const QString executable = QFile::symLinkTarget(folder + u"/exe"_s);
    if (!executable.isEmpty()) {
        return QFileInfo(executable).fileName();
    }
    // Another user's process does not tell its executable, but the beginning of its name.
    QFile name(folder + u"/comm"_s);
    return name.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(name.readAll()).trimmed() : QString();
}

QString nameFromWindowManager(const WindowManager& manager)
{
    const xcb_window_t window = manager.activeWindow();
    if (window == 0) {
        return {};
    }
    const quint32 process = manager.number(window, "_NET_WM_PID", XCB_ATOM_CARDINAL);
    const QString name = process != 0 ? executableName(process) : QString();
    return name.isEmpty() ? manager.windowClass(window) : name;
}

} // namespace

std::optional<QString> FrontmostProcess::name()
{
    if (const WindowManager manager; manager.isConnected()) {
        const QString name = nameFromWindowManager(manager);
        return name.isEmpty() ? std::nullopt : std::optional(name);
    }
    const bool isOurs = qobject_cast<QGuiApplication*>(QCoreApplication::instance()) &&
                        QGuiApplication::applicationState() == Qt::ApplicationActive;
    return isOurs ? std::optional(QFileInfo(QCoreApplication::applicationFilePath()).fileName()) : std::nullopt;
}
