// SPDX-License-Identifier: MIT
#pragma once

#include "ServerConversation.h"
#include "SessionWindow.h"
#include "WindowAtoms.h"

#include <map>

/// The windows that pass the window manager by: menus, tool tips and their like, as they come up and go away.
class PopupWindows final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PopupWindows)

public:
    /// Asks over @p server, which must live as long as this object, and be told of what happens to the children of the
    /// root.
    PopupWindows(ServerConversation& server, const WindowAtoms& atoms);

    /// Takes an event of the connection.
    void take(const xcb_generic_event_t& event);

Q_SIGNALS:
    void mapped(SessionWindow::Type type);
    /// Only of one that mapped() has told.
    void unmapped(SessionWindow::Type type);

private:
    void takeMap(xcb_window_t window);
    void takeUnmap(xcb_window_t window);

    ServerConversation& m_server;
    WindowAtoms m_atoms;
    /// Nothing until the server has told the type.
    std::map<xcb_window_t, std::optional<SessionWindow::Type>> m_mapped;
};
