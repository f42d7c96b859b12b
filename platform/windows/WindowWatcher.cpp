// SPDX-License-Identifier: MIT
#include "WindowWatcher.h"

#include "WindowProperties.h"

#include <xcb/res.h>

#include <algorithm>
#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto startLimit = 1s;
/// A window manager that starts lists the windows that it finds one by one.
constexpr auto takeOverTime = 1s;

const xcb_screen_t* screenAt(xcb_connection_t* connection, int number)
{
    xcb_screen_iterator_t screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; number > 0 && screen.rem > 1; --number) {
        xcb_screen_next(&screen);
    }
    return screen.data;
}

const xcb_get_property_reply_t* propertyIn(const void* reply)
{
    return static_cast<const xcb_get_property_reply_t*>(reply);
}

} // namespace

std::unique_ptr<WindowWatcher> WindowWatcher::ofSession()
{
    int screenNumber = 0;
    Xcb::Connection connection = Xcb::connectToServer(&screenNumber);
    if (!connection) {
        return nullptr;
    }
    const xcb_window_t root = screenAt(connection.get(), screenNumber)->root;
    return std::unique_ptr<WindowWatcher>(new WindowWatcher(std::move(connection), root));
}

WindowWatcher::WindowWatcher(Xcb::Connection connection, xcb_window_t root)
    : m_server(std::move(connection))
    , m_root(root)
    , m_atoms(WindowAtoms::of(m_server.connection()))
    , m_popups(m_server, m_atoms)
{
    connect(&m_server, &ServerConversation::eventCame, this, &WindowWatcher::takeEvent);
    connect(&m_server, &ServerConversation::ended, this, &WindowWatcher::ended);
    connect(&m_popups, &PopupWindows::mapped, this, &WindowWatcher::popupMapped);
    connect(&m_popups, &PopupWindows::unmapped, this, &WindowWatcher::popupUnmapped);
    const quint32 events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_server.connection(), m_root, XCB_CW_EVENT_MASK, &events);
    takeRootProperty(m_atoms.supportingWmCheck);
    m_server.settle(startLimit);
    // Who has been there before this object is nobody who takes over.
    m_takeOver = QDeadlineTimer();
}

WindowWatcher::~WindowWatcher() = default;

std::vector<SessionWindow> WindowWatcher::windows() const
{
    std::vector<SessionWindow> windows;
    for (const quint32 number : m_listed) {
        if (const Known* const known = described(number)) {
            windows.push_back(known->window);
        }
    }
    return windows;
}

std::optional<SessionWindow> WindowWatcher::active() const
{
    const Known* const known = described(m_active);
    return known ? std::optional(known->window) : std::nullopt;
}

/// Null for a window that is not known, or not yet.
const WindowWatcher::Known* WindowWatcher::described(quint32 window) const
{
    const auto found = m_windows.find(window);
    return found != m_windows.end() && found->second.isDescribed ? &found->second : nullptr;
}

void WindowWatcher::takeEvent(const xcb_generic_event_t& event)
{
    const int type = event.response_type & 0x7F;
    if (type == XCB_DESTROY_NOTIFY && reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == m_manager) {
        takeManager(0);
    }
    if (type != XCB_PROPERTY_NOTIFY) {
        m_popups.take(event);
        return;
    }
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (change.window == m_root) {
        takeRootProperty(change.atom);
    } else if (m_windows.contains(change.window) && WindowProperties::isFollowed(m_atoms, change.atom)) {
        ask(change.window, change.atom);
    }
}

void WindowWatcher::takeRootProperty(xcb_atom_t property)
{
    if (property != m_atoms.supportingWmCheck && property != m_atoms.clientList && property != m_atoms.activeWindow) {
        return;
    }
    const auto request = WindowProperties::request(m_server.connection(), m_root, property);
    m_server.expect(request.sequence, [this, property](const void* reply) {
        const std::vector<quint32> told = WindowProperties::numbers(propertyIn(reply));
        if (property == m_atoms.supportingWmCheck) {
            verifyManager(told.empty() ? 0 : told.front());
        } else if (property == m_atoms.clientList) {
            takeList(told);
        } else {
            takeActive(told.empty() ? 0 : told.front());
        }
    });
}

/// A window manager that was killed leaves the root's property behind, but not the window that it names.
void WindowWatcher::verifyManager(quint32 window)
{
    const auto request = WindowProperties::request(m_server.connection(), window, m_atoms.supportingWmCheck);
    m_server.expect(request.sequence, [this, window](const void* reply) {
        const std::vector<quint32> told = WindowProperties::numbers(propertyIn(reply));
        takeManager(!told.empty() && told.front() == window ? window : 0);
    });
}

void WindowWatcher::takeManager(quint32 window)
{
    if (std::exchange(m_manager, window) == window) {
        return;
    }
    if (window != 0) {
        m_takeOver.setRemainingTime(takeOverTime);
        takeRootProperty(m_atoms.clientList);
        takeRootProperty(m_atoms.activeWindow);
        return;
    }
    // They are there still, but nobody tells of them any more.
    m_windows.clear();
    m_listed.clear();
    if (std::exchange(m_active, 0) != 0) {
        Q_EMIT activated({});
    }
}

void WindowWatcher::takeList(const std::vector<quint32>& listed)
{
    if (m_manager == 0) {
        return;
    }
    const std::vector<quint32> before = std::exchange(m_listed, listed);
    for (const quint32 window : before) {
        if (std::ranges::find(listed, window) == listed.end()) {
            drop(window);
        }
    }
    for (const quint32 window : listed) {
        if (!m_windows.contains(window)) {
            describe(window);
        }
        Known& known = m_windows[window];
        if (!std::exchange(known.isListed, true)) {
            known.isNews = m_takeOver.hasExpired();
            if (known.isDescribed && known.isNews) {
                const SessionWindow told = known.window;
                Q_EMIT opened(told);
            }
        }
    }
}

void WindowWatcher::takeActive(quint32 window)
{
    if (m_manager == 0 || window == m_active) {
        return;
    }
    const auto previous = m_windows.find(std::exchange(m_active, window));
    if (previous != m_windows.end() && !previous->second.isListed) {
        m_windows.erase(previous);
    }
    if (window == 0 || described(window)) {
        Q_EMIT activated(active());
    } else if (!m_windows.contains(window)) {
        // Some window managers name it before they list it. It is told when it is described.
        describe(window);
    }
}

void WindowWatcher::describe(quint32 window)
{
    m_windows[window].window.id = window;
    const quint32 events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_server.connection(), window, XCB_CW_EVENT_MASK, &events);
    for (const xcb_atom_t name :
        {xcb_atom_t(XCB_ATOM_WM_CLASS), m_atoms.type, m_atoms.state, m_atoms.desktop, m_atoms.processNumber}) {
        ask(window, name);
    }
    askForProcess(window);
}

/// What the server itself knows of the process, where it can tell: a property may come from another machine, or out of
/// a container with numbers of its own. Its answer is the last one.
void WindowWatcher::askForProcess(quint32 window)
{
    xcb_connection_t* const connection = m_server.connection();
    const xcb_query_extension_reply_t* const extension = xcb_get_extension_data(connection, &xcb_res_id);
    if (!extension || extension->present == 0) {
        const auto request = WindowProperties::request(connection, window, m_atoms.processNumber);
        m_server.expect(request.sequence, [this, window](const void*) { finish(window); });
        return;
    }
    const xcb_res_client_id_spec_t wanted{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto request = xcb_res_query_client_ids(connection, 1, &wanted);
    m_server.expect(request.sequence, [this, window](const void* reply) {
        const auto known = m_windows.find(window);
        if (reply && known != m_windows.end()) {
            const auto* const clients = static_cast<const xcb_res_query_client_ids_reply_t*>(reply);
            const xcb_res_client_id_value_iterator_t client = xcb_res_query_client_ids_ids_iterator(clients);
            if (client.rem > 0 && xcb_res_client_id_value_value_length(client.data) > 0) {
                known->second.window.pid = *xcb_res_client_id_value_value(client.data);
            }
        }
        finish(window);
    });
}

void WindowWatcher::finish(quint32 window)
{
    const auto found = m_windows.find(window);
    if (found == m_windows.end() || found->second.isDescribed) {
        return;
    }
    Known& known = found->second;
    known.isDescribed = true;
    known.window.applicationPath = m_applications.pathFor(known.window);
    const SessionWindow told = known.window;
    if (known.isListed && known.isNews) {
        Q_EMIT opened(told);
    }
    if (window == m_active) {
        Q_EMIT activated(told);
    }
}

void WindowWatcher::ask(quint32 window, xcb_atom_t property)
{
    const auto request = WindowProperties::request(m_server.connection(), window, property);
    m_server.expect(request.sequence,
        [this, window, property](const void* reply) { takeProperty(window, property, propertyIn(reply)); });
}

void WindowWatcher::takeProperty(quint32 window, xcb_atom_t property, const xcb_get_property_reply_t* reply)
{
    const auto found = m_windows.find(window);
    // Nothing is told of a window that has just gone: the list will.
    if (found == m_windows.end() || !reply) {
        return;
    }
    Known& known = found->second;
    const SessionWindow before = known.window;
    WindowProperties::apply(known.window, m_atoms, property, reply);
    if (!known.isDescribed || known.window == before) {
        return;
    }
    if (property == XCB_ATOM_WM_CLASS) {
        known.window.applicationPath = m_applications.pathFor(known.window);
    }
    const SessionWindow now = known.window;
    Q_EMIT changed(before, now);
}

void WindowWatcher::drop(quint32 window)
{
    const auto found = m_windows.find(window);
    if (found == m_windows.end()) {
        return;
    }
    const Known known = found->second;
    m_windows.erase(found);
    if (known.isDescribed) {
        Q_EMIT closed(known.window);
    }
}
