// SPDX-License-Identifier: MIT
#include "HotKeyGrabs.h"

#include "ModifierMapping.h"
#include "VirtualKeyCodes.h"

#include <product/Product.h>

#include <QLoggingCategory>

#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <utility>

namespace {

Q_LOGGING_CATEGORY(log, PRODUCT_NAME ".hotkeys")

constexpr int commandBit = 0x100;
constexpr int shiftBit = 0x200;
constexpr int optionBit = 0x800;
constexpr int controlBit = 0x1000;

/// The X11 keycodes of the keys that have a virtual key code; there is none for a keycode beyond the server's range.
std::vector<quint8> serverKeycodes(int virtualKeyCode)
{
    std::vector<quint8> keycodes;
    for (const quint32 keycode : VirtualKeyCodes::xkbKeycodes(virtualKeyCode)) {
        if (keycode <= std::numeric_limits<quint8>::max()) {
            keycodes.push_back(quint8(keycode));
        }
    }
    return keycodes;
}

} // namespace

HotKeyGrabs::HotKeyGrabs(QObject* parent)
    : QObject(parent)
{
}

bool HotKeyGrabs::arePossible()
{
    return Xcb::connectToServer() != nullptr;
}

std::optional<HotKeyReference> HotKeyGrabs::registerHotKey(int virtualKeyCode, int modifiers)
{
    const std::vector<quint8> keycodes = serverKeycodes(virtualKeyCode);
    if (keycodes.empty() || !connectToServer()) {
        return {};
    }
    const std::optional<std::vector<quint16>> masks = modifierMasks(modifiers);
    if (!masks) {
        return {};
    }
    Grab granted{virtualKeyCode, {}, *masks};
    // The server would grant a second grab of one client, but the two could not be given back one by one.
    const bool held = std::any_of(m_grabs.begin(), m_grabs.end(), [&granted](const auto& entry) {
        return entry.second.virtualKeyCode == granted.virtualKeyCode &&
               entry.second.modifierMasks == granted.modifierMasks;
    });
    if (!held) {
        std::copy_if(keycodes.begin(), keycodes.end(), std::back_inserter(granted.keycodes),
            [&](quint8 keycode) { return grabKey(keycode, *masks); });
    }
    if (granted.keycodes.empty()) {
        qCInfo(log).noquote() << "Refused, since it is in use: the hot key" << virtualKeyCode << modifiers;
        return {};
    }
    const HotKeyReference reference{++m_lastReference};
    m_grabs.emplace(reference, std::move(granted));
    // Reading the replies has read the events before them too, of which the notifier will not tell.
    QMetaObject::invokeMethod(this, &HotKeyGrabs::takeEvents, Qt::QueuedConnection);
    return reference;
}

void HotKeyGrabs::unregisterHotKey(HotKeyReference reference)
{
    const auto found = m_grabs.find(reference);
    if (found == m_grabs.end()) {
        return;
    }
    for (const quint8 keycode : found->second.keycodes) {
        ungrabKey(keycode, found->second.modifierMasks);
    }
    m_grabs.erase(found);
}

bool HotKeyGrabs::connectToServer()
{
    if (m_connection) {
        return !Xcb::isBroken(m_connection);
    }
    int screenNumber = 0;
    Xcb::Connection connection = Xcb::connectToServer(&screenNumber);
    if (!connection) {
        qCWarning(log).noquote() << "No X server: hot keys cannot be registered in this session";
        return false;
    }
    xcb_screen_iterator_t screen = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
    for (; screen.rem > 1 && screenNumber > 0; --screenNumber) {
        xcb_screen_next(&screen);
    }
    m_rootWindow = screen.data->root;
    m_connection = std::move(connection);
    Xcb::whenReadable(m_connection, this, [this] { takeEvents(); });
    return true;
}

/// The classic mask in the server's bits, for each state of the locks; nothing where the keyboard lacks a modifier.
std::optional<std::vector<quint16>> HotKeyGrabs::modifierMasks(int modifiers) const
{
    const ModifierMapping mapping = ModifierMapping::ofServer(m_connection.get());
    const std::array<std::pair<int, unsigned>, 4> bits{{{commandBit, mapping.super}, {optionBit, mapping.alt},
        {controlBit, XCB_MOD_MASK_CONTROL}, {shiftBit, XCB_MOD_MASK_SHIFT}}};
    unsigned mask = 0;
    for (const auto& [classicBit, serverBit] : bits) {
        if ((modifiers & classicBit) == 0) {
            continue;
        }
        if (serverBit == 0) {
            return {};
        }
        mask |= serverBit;
    }
    constexpr unsigned capsLock = XCB_MOD_MASK_LOCK;
    std::vector<quint16> masks{quint16(mask), quint16(mask | capsLock)};
    if (mapping.numLock != 0) {
        masks.push_back(quint16(mask | mapping.numLock));
        masks.push_back(quint16(mask | capsLock | mapping.numLock));
    }
    return masks;
}

/// All or nothing: a combination that is free only while Num Lock is on is no use.
bool HotKeyGrabs::grabKey(quint8 keycode, const std::vector<quint16>& modifierMasks)
{
    std::vector<xcb_void_cookie_t> requests;
    requests.reserve(modifierMasks.size());
    for (const quint16 mask : modifierMasks) {
        requests.push_back(xcb_grab_key_checked(
            m_connection.get(), 0, m_rootWindow, mask, keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }
    bool granted = true;
    for (const xcb_void_cookie_t request : requests) {
        const Xcb::Reply<xcb_generic_error_t> error(xcb_request_check(m_connection.get(), request));
        granted = granted && !error;
    }
    if (!granted) {
        ungrabKey(keycode, modifierMasks);
    }
    return granted;
}

void HotKeyGrabs::ungrabKey(quint8 keycode, const std::vector<quint16>& modifierMasks)
{
    for (const quint16 mask : modifierMasks) {
        xcb_ungrab_key(m_connection.get(), keycode, m_rootWindow, mask);
    }
    xcb_flush(m_connection.get());
}

void HotKeyGrabs::takeEvents()
{
    while (const auto event = Xcb::Reply<xcb_generic_event_t>(xcb_poll_for_event(m_connection.get()))) {
        // A release has the same fields.
        const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(*event);
        switch (event->response_type & 0x7F) {
        case XCB_KEY_PRESS:
            takeKeyPress(key.detail, key.state, key.time);
            break;
        case XCB_KEY_RELEASE:
            m_releasedKey = key.detail;
            m_releaseTime = key.time;
            break;
        case XCB_MAPPING_NOTIFY:
            if (reinterpret_cast<const xcb_mapping_notify_event_t&>(*event).request != XCB_MAPPING_POINTER) {
                Q_EMIT keyboardChanged();
            }
            break;
        default:
            break;
        }
    }
}

void HotKeyGrabs::takeKeyPress(quint8 keycode, quint16 state, quint32 time)
{
    const bool isRepetition = keycode == m_releasedKey && time == m_releaseTime;
    // Above the eight modifiers are the pointer's buttons and the layout's group.
    const auto modifiers = quint16(state & 0xFF);
    const auto isMeant = [keycode, modifiers](const auto& entry) {
        const Grab& grab = entry.second;
        return std::ranges::find(grab.keycodes, keycode) != grab.keycodes.end() &&
               std::ranges::find(grab.modifierMasks, modifiers) != grab.modifierMasks.end();
    };
    const auto found = std::ranges::find_if(m_grabs, isMeant);
    if (!isRepetition && found != m_grabs.end()) {
        Q_EMIT pressed(found->first);
    }
}
