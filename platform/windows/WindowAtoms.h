// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

/// The server's numbers for the names of the Extended Window Manager Hints.
struct WindowAtoms
{
    xcb_atom_t supportingWmCheck = XCB_ATOM_NONE;
    xcb_atom_t clientList = XCB_ATOM_NONE;
    xcb_atom_t activeWindow = XCB_ATOM_NONE;
    xcb_atom_t processNumber = XCB_ATOM_NONE;
    xcb_atom_t desktop = XCB_ATOM_NONE;
    xcb_atom_t state = XCB_ATOM_NONE;
    xcb_atom_t stateHidden = XCB_ATOM_NONE;
    xcb_atom_t stateDemandsAttention = XCB_ATOM_NONE;
    xcb_atom_t type = XCB_ATOM_NONE;
    xcb_atom_t typeNormal = XCB_ATOM_NONE;
    xcb_atom_t typeDialog = XCB_ATOM_NONE;
    xcb_atom_t typeMenu = XCB_ATOM_NONE;
    xcb_atom_t typePopupMenu = XCB_ATOM_NONE;
    xcb_atom_t typeDropdownMenu = XCB_ATOM_NONE;
    xcb_atom_t typeToolTip = XCB_ATOM_NONE;
    xcb_atom_t typeNotification = XCB_ATOM_NONE;

    /// Asks the server, and waits for its answers.
    static WindowAtoms of(xcb_connection_t* connection);
};
