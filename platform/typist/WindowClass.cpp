// SPDX-License-Identifier: MIT
#include "WindowClass.h"

#include <platform/keyboard/XcbHandles.h>

#include <QByteArray>
#include <QList>

#include <xcb/xcb.h>

namespace {

/// In units of 4 bytes; the longest classes are those of sandboxed programs.
constexpr quint32 longestInWords = 64;

QString classOf(xcb_connection_t* connection, xcb_window_t window)
{
    const auto request =
        xcb_get_property(connection, 0, window, XCB_ATOM_WM_CLASS, XCB_GET_PROPERTY_TYPE_ANY, 0, longestInWords);
    const Xcb::Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, request, nullptr));
    if (!reply || reply->format != 8) {
        return {};
    }
    const auto* const bytes = static_cast<const char*>(xcb_get_property_value(reply.get()));
    const QList<QByteArray> halves = QByteArray(bytes, xcb_get_property_value_length(reply.get())).split('\0');
    return QString::fromLatin1(halves.value(1));
}

/// 0 for the root, and for a window that has gone.
xcb_window_t parentOf(xcb_connection_t* connection, xcb_window_t window)
{
    const Xcb::Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection, xcb_query_tree(connection, window), nullptr));
    return tree ? tree->parent : xcb_window_t(XCB_WINDOW_NONE);
}

} // namespace

QString WindowClass::around(xcb_connection_t* connection, quint32 window)
{
    QString found;
    for (; window != XCB_WINDOW_NONE && found.isEmpty(); window = parentOf(connection, window)) {
        found = classOf(connection, window);
    }
    return found;
}
