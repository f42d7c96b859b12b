// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

class QObject;

struct xcb_connection_t;

/// Connections to the X server, and owners of what its library hands out.
namespace Xcb {

struct Release
{
    void operator()(xcb_connection_t* connection) const;
    /// Replies and events, which the library has allocated with malloc.
    void operator()(void* memory) const;
};

using Connection = std::unique_ptr<xcb_connection_t, Release>;

template <typename Type>
using Reply = std::unique_ptr<Type, Release>;

/// A connection of its own to the session's X server; null where there is none. The number of the screen that the
/// session uses goes to @p screenNumber.
Connection connectToServer(int* screenNumber = nullptr);

/// Whether the connection has broken: then it stays so.
bool isBroken(const Connection& connection);

/// Calls @p handler when the server has sent something, as long as @p context lives and the connection is not broken.
void whenReadable(const Connection& connection, QObject* context, const std::function<void()>& handler);

} // namespace Xcb
