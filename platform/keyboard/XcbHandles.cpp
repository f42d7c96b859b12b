// SPDX-License-Identifier: MIT
#include "XcbHandles.h"

#include <QSocketNotifier>

#include <xcb/xcb.h>

#include <cstdlib>

void Xcb::Release::operator()(xcb_connection_t* connection) const
{
    xcb_disconnect(connection);
}

void Xcb::Release::operator()(void* memory) const
{
    std::free(memory); // NOLINT(*-no-malloc)
}

Xcb::Connection Xcb::connectToServer(int* screenNumber)
{
    // A connection that fails is an object all the same, and must be closed like any other.
    Connection connection(qEnvironmentVariableIsSet("DISPLAY") ? xcb_connect(nullptr, screenNumber) : nullptr);
    return connection && !isBroken(connection) ? std::move(connection) : nullptr;
}

bool Xcb::isBroken(const Connection& connection)
{
    return xcb_connection_has_error(connection.get()) != 0;
}

void Xcb::whenReadable(const Connection& connection, QObject* context, const std::function<void()>& handler)
{
    auto* const notifier =
        new QSocketNotifier(xcb_get_file_descriptor(connection.get()), QSocketNotifier::Read, context);
    QObject::connect(notifier, &QSocketNotifier::activated, context, [notifier, handler, &connection] {
        handler();
        notifier->setEnabled(!isBroken(connection));
    });
}
