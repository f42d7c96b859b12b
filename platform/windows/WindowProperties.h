// SPDX-License-Identifier: MIT
#pragma once

#include "SessionWindow.h"
#include "WindowAtoms.h"

#include <xcb/xcb.h>

#include <vector>

/// What the properties of windows tell. Any client may put anything there; what has another form than the property's
/// own reads as nothing.
namespace WindowProperties {

/// Asks for a property of @p window; what is beyond 64 kB is left out.
xcb_get_property_cookie_t request(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property);

/// The numbers, windows or atoms in @p reply, which may be null.
std::vector<quint32> numbers(const xcb_get_property_reply_t* reply);

/// The kind of window that _NET_WM_WINDOW_TYPE tells: that of the first of its types that is known here.
SessionWindow::Type type(const WindowAtoms& atoms, const xcb_get_property_reply_t* reply);

/// Whether a window's description depends on @p property.
bool isFollowed(const WindowAtoms& atoms, xcb_atom_t property);

/// @p window with what @p reply tells of @p property, or with nothing there.
void apply(SessionWindow& window, const WindowAtoms& atoms, xcb_atom_t property, const xcb_get_property_reply_t* reply);

} // namespace WindowProperties
