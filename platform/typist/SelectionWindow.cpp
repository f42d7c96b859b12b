// SPDX-License-Identifier: MIT
#include "SelectionWindow.h"

#include <xcb/xcb.h>

#include <utility>

std::unique_ptr<SelectionWindow> SelectionWindow::create()
{
    Xcb::Connection connection = Xcb::connectToServer();
    return std::unique_ptr<SelectionWindow>(connection ? new SelectionWindow(std::move(connection)) : nullptr);
}

SelectionWindow::SelectionWindow(Xcb::Connection connection)
    : m_connection(std::move(connection))
{
    renew();
}

void SelectionWindow::renew()
{
    if (m_id != 0) {
        xcb_destroy_window(server(), m_id);
    }
    m_id = xcb_generate_id(server());
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(server())).data->root;
    xcb_create_window(server(), XCB_COPY_FROM_PARENT, m_id, root, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
        XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_flush(server());
}

quint32 SelectionWindow::atom(const QByteArray& name) const
{
    quint32& atom = m_atoms[name];
    if (atom == 0) {
        const auto request = xcb_intern_atom(server(), 0, quint16(name.size()), name.constData());
        const Xcb::Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(server(), request, nullptr));
        atom = reply ? reply->atom : 0;
    }
    return atom;
}

quint32 SelectionWindow::ownerOf(quint32 selection) const
{
    const Xcb::Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(server(), xcb_get_selection_owner(server(), selection), nullptr));
    return reply ? reply->owner : 0;
}
