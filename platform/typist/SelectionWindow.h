// SPDX-License-Identifier: MIT
#pragma once

#include <platform/keyboard/XcbHandles.h>

#include <QByteArray>
#include <QHash>

#include <memory>

/// A window of its own connection that is never shown, by which programs exchange selections.
class SelectionWindow final
{
public:
    /// Null where there is no X server.
    static std::unique_ptr<SelectionWindow> create();

    const Xcb::Connection& connection() const { return m_connection; }

    xcb_connection_t* server() const { return m_connection.get(); }

    quint32 id() const { return m_id; }

    /// Another window, without any of the properties that others may still write to this one.
    void renew();

    /// The atom of a name; 0 when the server does not answer.
    quint32 atom(const QByteArray& name) const;

    /// The window that owns a selection; 0 where none does.
    quint32 ownerOf(quint32 selection) const;

private:
    explicit SelectionWindow(Xcb::Connection connection);

    Xcb::Connection m_connection;
    quint32 m_id = 0;
    mutable QHash<QByteArray, quint32> m_atoms;
};
