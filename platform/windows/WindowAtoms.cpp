// SPDX-License-Identifier: MIT
#include "WindowAtoms.h"

#include <platform/keyboard/XcbHandles.h>

#include <array>
#include <cstring>

namespace {

struct Name
{
    const char* name;
    xcb_atom_t WindowAtoms::*atom;
};

constexpr auto names = std::to_array<Name>({
    {"_NET_SUPPORTING_WM_CHECK", &WindowAtoms::supportingWmCheck},
    {"_NET_CLIENT_LIST", &WindowAtoms::clientList},
    {"_NET_ACTIVE_WINDOW", &WindowAtoms::activeWindow},
    {"_NET_WM_PID", &WindowAtoms::processNumber},
    {"_NET_WM_DESKTOP", &WindowAtoms::desktop},
    {"_NET_WM_STATE", &WindowAtoms::state},
    {"_NET_WM_STATE_HIDDEN", &WindowAtoms::stateHidden},
    {"_NET_WM_STATE_DEMANDS_ATTENTION", &WindowAtoms::stateDemandsAttention},
    {"_NET_WM_WINDOW_TYPE", &WindowAtoms::type},
    {"_NET_WM_WINDOW_TYPE_NORMAL", &WindowAtoms::typeNormal},
    {"_NET_WM_WINDOW_TYPE_DIALOG", &WindowAtoms::typeDialog},
    {"_NET_WM_WINDOW_TYPE_MENU", &WindowAtoms::typeMenu},
    {"_NET_WM_WINDOW_TYPE_POPUP_MENU", &WindowAtoms::typePopupMenu},
    {"_NET_WM_WINDOW_TYPE_DROPDOWN_MENU", &WindowAtoms::typeDropdownMenu},
    {"_NET_WM_WINDOW_TYPE_TOOLTIP", &WindowAtoms::typeToolTip},
    {"_NET_WM_WINDOW_TYPE_NOTIFICATION", &WindowAtoms::typeNotification},
});

} // namespace

WindowAtoms WindowAtoms::of(xcb_connection_t* connection)
{
    std::array<xcb_intern_atom_cookie_t, names.size()> requests{};
    for (size_t i = 0; i < names.size(); ++i) {
        requests[i] = xcb_intern_atom(connection, 0, uint16_t(std::strlen(names[i].name)), names[i].name);
    }
    WindowAtoms atoms;
    for (size_t i = 0; i < names.size(); ++i) {
        const Xcb::Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, requests[i], nullptr));
        atoms.*names[i].atom = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    }
    return atoms;
}
