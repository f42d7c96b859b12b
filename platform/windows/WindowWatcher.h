// SPDX-License-Identifier: MIT
#pragma once

#include "PopupWindows.h"
#include "ServerConversation.h"
#include "SessionWindow.h"
#include "WindowApplications.h"
#include "WindowAtoms.h"

#include <QDeadlineTimer>
#include <QObject>

#include <map>
#include <memory>
#include <optional>
#include <vector>

struct xcb_get_property_reply_t;

/// Follows the windows of the session through what the X server's window manager tells (public source: Extended Window
/// Manager Hints): which there are, their states and desktops, and which one is active. On a connection of its own,
/// driven by events; nothing is waited for but the first answers.
///
/// Without a window manager of that kind it is silent until one comes. What that one finds is no news. Why so:
/// docs/decisions/watched-windows.md.
class WindowWatcher final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(WindowWatcher)

public:
    /// Knows the windows that there are when it returns, unless the server takes more than a second to answer. Null
    /// where there is no X server.
    static std::unique_ptr<WindowWatcher> ofSession();

    ~WindowWatcher() override;

    /// In the window manager's order: those that have been there longest come first.
    std::vector<SessionWindow> windows() const;
    /// The window that has the keyboard; nothing where none has, or the window manager does not tell.
    std::optional<SessionWindow> active() const;

Q_SIGNALS:
    void opened(const SessionWindow& window);
    void closed(const SessionWindow& window);
    /// A state, the desktop or another part of the description is another now.
    void changed(const SessionWindow& before, const SessionWindow& now);
    /// Another window has the keyboard now; nothing where none has.
    void activated(const std::optional<SessionWindow>& window);
    /// A window that passes the window manager by has come up or gone: a menu, for instance.
    void popupMapped(SessionWindow::Type type);
    void popupUnmapped(SessionWindow::Type type);
    /// Nothing more will come: the X server is gone. To be deleted later, not in the receiver.
    void ended();

private:
    struct Known
    {
        SessionWindow window;
        /// All answers about it have come.
        bool isDescribed = false;
        /// In the window manager's list; the active window may come to be known before.
        bool isListed = false;
        bool isNews = false;
    };

    WindowWatcher(Xcb::Connection connection, xcb_window_t root);
    void takeEvent(const xcb_generic_event_t& event);
    void takeRootProperty(xcb_atom_t property);
    void takeManager(quint32 window);
    void verifyManager(quint32 window);
    void takeList(const std::vector<quint32>& listed);
    void takeActive(quint32 window);
    void describe(quint32 window);
    void finish(quint32 window);
    void askForProcess(quint32 window);
    void ask(quint32 window, xcb_atom_t property);
    void takeProperty(quint32 window, xcb_atom_t property, const xcb_get_property_reply_t* reply);
    void drop(quint32 window);
    const Known* described(quint32 window) const;

    ServerConversation m_server;
    xcb_window_t m_root;
    WindowAtoms m_atoms;
    WindowApplications m_applications;
    PopupWindows m_popups;
    std::map<quint32, Known> m_windows;
    /// In the window manager's order.
    std::vector<quint32> m_listed;
    /// 0 for none.
    quint32 m_active = 0;
    /// The window by which a window manager shows that it is there; 0 for none.
    quint32 m_manager = 0;
    /// While a window manager that has just come takes over the windows that it finds.
    QDeadlineTimer m_takeOver;
};
