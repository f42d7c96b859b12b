// SPDX-License-Identifier: MIT
#include "ServerBell.h"

#include "XkbProtocol.h"

#include <xkbcommon/xkbcommon-x11.h>

#include <utility>

std::unique_ptr<ServerBell> ServerBell::ofSession()
{
    Xcb::Connection connection = Xcb::connectToServer();
    quint8 firstEvent = 0;
    if (!connection ||
        xkb_x11_setup_xkb_extension(connection.get(), XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
            XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &firstEvent, nullptr) == 0) {
        return nullptr;
    }
    return std::unique_ptr<ServerBell>(new ServerBell(std::move(connection), firstEvent));
}

ServerBell::ServerBell(Xcb::Connection connection, quint8 firstEvent)
    : m_connection(std::move(connection))
    , m_firstEvent(firstEvent)
{
    xcb_xkb_select_events(m_connection.get(), XCB_XKB_ID_USE_CORE_KBD, XCB_XKB_EVENT_TYPE_BELL_NOTIFY, 0,
        XCB_XKB_EVENT_TYPE_BELL_NOTIFY, 0, 0, nullptr);
    xcb_flush(m_connection.get());
    Xcb::whenReadable(m_connection, this, [this] { readEvents(); });
}

void ServerBell::readEvents()
{
    while (const Xcb::Reply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.get())}) {
        // The second byte of an event of the extension is its kind.
        if ((event->response_type & 0x7F) == m_firstEvent && event->pad0 == XCB_XKB_BELL_NOTIFY) {
            Q_EMIT rung();
        }
    }
}
