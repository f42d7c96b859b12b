// SPDX-License-Identifier: MIT
#include "ServerKeyboard.h"

#include "XcbHandles.h"
#include "XkbProtocol.h"

#include <xkbcommon/xkbcommon-x11.h>

#include <algorithm>

namespace {

/// What all events of the extension begin with; they share one number, and the type tells them apart.
template <typename Event>
const Event& as(const xcb_generic_event_t& event)
{
    return reinterpret_cast<const Event&>(event);
}

} // namespace

std::optional<ServerKeyboard> ServerKeyboard::of(xcb_connection_t* connection, Follow follow)
{
    quint8 firstEvent = 0;
    if (xkb_x11_setup_xkb_extension(connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
            XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &firstEvent, nullptr) == 0) {
        return {};
    }
    const ServerKeyboard keyboard(connection, firstEvent);
    keyboard.selectEvents(follow);
    return keyboard;
}

ServerKeyboard::ServerKeyboard(xcb_connection_t* connection, quint8 firstEvent)
    : m_connection(connection)
    , m_device(xkb_x11_get_core_keyboard_device_id(connection))
    , m_firstEvent(firstEvent)
{
}

void ServerKeyboard::selectEvents(Follow follow) const
{
    constexpr quint16 mapParts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_VIRTUAL_MODS;
    quint16 events =
        XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY | XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
    xcb_xkb_select_events_details_t details{};
    details.affectNewKeyboard = XCB_XKB_NKN_DETAIL_KEYCODES;
    details.newKeyboardDetails = XCB_XKB_NKN_DETAIL_KEYCODES;
    // The modifiers change with every other key press, so they are told only to who needs them.
    quint16 stateParts = XCB_XKB_STATE_PART_GROUP_STATE;
    if (follow == Follow::State) {
        events |= XCB_XKB_EVENT_TYPE_CONTROLS_NOTIFY;
        constexpr quint32 repetition =
            quint32(XCB_XKB_BOOL_CTRL_REPEAT_KEYS) | XCB_XKB_CONTROL_PER_KEY_REPEAT | XCB_XKB_CONTROL_CONTROLS_ENABLED;
        details.affectCtrls = repetition;
        details.ctrlDetails = repetition;
        stateParts = XCB_XKB_STATE_PART_MODIFIER_BASE | XCB_XKB_STATE_PART_MODIFIER_LATCH |
                     XCB_XKB_STATE_PART_MODIFIER_LOCK | XCB_XKB_STATE_PART_GROUP_BASE | XCB_XKB_STATE_PART_GROUP_LATCH |
                     XCB_XKB_STATE_PART_GROUP_LOCK;
    }
    details.affectState = stateParts;
    details.stateDetails = stateParts;
    xcb_xkb_select_events_aux(
        m_connection, xcb_xkb_device_spec_t(m_device), events, 0, 0, mapParts, mapParts, &details);
    xcb_flush(m_connection);
}

ServerKeyboard::News ServerKeyboard::news(const xcb_generic_event_t& event) const
{
    // The top bit marks events that another client sent.
    if ((event.response_type & 0x7F) != m_firstEvent) {
        return News::None;
    }
    // The device stands at the same place in the four that were asked for.
    const auto& common = as<xcb_xkb_state_notify_event_t>(event);
    switch (common.xkbType) {
    case XCB_XKB_NEW_KEYBOARD_NOTIFY:
    case XCB_XKB_MAP_NOTIFY:
        // The keyboards behind the core one have layouts of their own, which come to count when one is typed on.
        return common.deviceID == m_device ? News::Layout : News::None;
    case XCB_XKB_STATE_NOTIFY:
        return News::State;
    case XCB_XKB_CONTROLS_NOTIFY:
        return News::Repetition;
    default:
        return News::None;
    }
}

KeyboardState ServerKeyboard::state(const xcb_generic_event_t& event)
{
    const auto& notify = as<xcb_xkb_state_notify_event_t>(event);
    return {notify.baseMods, notify.latchedMods, notify.lockedMods, quint32(qint32(notify.baseGroup)),
        quint32(qint32(notify.latchedGroup)), notify.lockedGroup};
}

Xkb::State ServerKeyboard::readState() const
{
    const Xkb::Context context = Xkb::contextWithoutFiles();
    const Xkb::Keymap keymap(
        context ? xkb_x11_keymap_new_from_device(context.get(), m_connection, m_device, XKB_KEYMAP_COMPILE_NO_FLAGS)
                : nullptr);
    return Xkb::State(keymap ? xkb_x11_state_new_from_device(keymap.get(), m_connection, m_device) : nullptr);
}

KeyRepetition ServerKeyboard::readRepetition() const
{
    const auto request = xcb_xkb_get_controls(m_connection, xcb_xkb_device_spec_t(m_device));
    const Xcb::Reply<xcb_xkb_get_controls_reply_t> reply(xcb_xkb_get_controls_reply(m_connection, request, nullptr));
    KeyRepetition repetition;
    if (reply && (reply->enabledControls & XCB_XKB_BOOL_CTRL_REPEAT_KEYS) != 0) {
        std::ranges::copy(reply->perKeyRepeat, repetition.keys.begin());
        repetition.delay = std::chrono::milliseconds(reply->repeatDelay);
        repetition.interval = std::chrono::milliseconds(reply->repeatInterval);
    }
    return repetition;
}
