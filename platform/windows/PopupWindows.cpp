// SPDX-License-Identifier: MIT
#include "PopupWindows.h"

#include "WindowProperties.h"

PopupWindows::PopupWindows(ServerConversation& server, const WindowAtoms& atoms)
    : m_server(server)
    , m_atoms(atoms)
{
}

void PopupWindows::take(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7F) {
    case XCB_MAP_NOTIFY: {
        const auto& map = reinterpret_cast<const xcb_map_notify_event_t&>(event);
        if (map.override_redirect != 0) {
            takeMap(map.window);
        }
        break;
    }
    case XCB_UNMAP_NOTIFY:
        takeUnmap(reinterpret_cast<const xcb_unmap_notify_event_t&>(event).window);
        break;
    case XCB_DESTROY_NOTIFY:
        takeUnmap(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
        break;
    default:
        break;
    }
}

void PopupWindows::takeMap(xcb_window_t window)
{
    m_mapped[window].reset();
    const auto request = WindowProperties::request(m_server.connection(), window, m_atoms.type);
    m_server.expect(request.sequence, [this, window](const void* reply) {
        const auto found = m_mapped.find(window);
        if (found == m_mapped.end() || !reply) {
            return;
        }
        const auto type = WindowProperties::type(m_atoms, static_cast<const xcb_get_property_reply_t*>(reply));
        found->second = type;
        Q_EMIT mapped(type);
    });
}

void PopupWindows::takeUnmap(xcb_window_t window)
{
    const auto found = m_mapped.find(window);
    if (found == m_mapped.end()) {
        return;
    }
    const std::optional<SessionWindow::Type> type = found->second;
    m_mapped.erase(found);
    if (type) {
        Q_EMIT unmapped(*type);
    }
}
