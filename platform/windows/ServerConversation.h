// SPDX-License-Identifier: MIT
#pragma once

#include <platform/keyboard/XcbHandles.h>

#include <QObject>

#include <xcb/xcb.h>

#include <chrono>
#include <deque>
#include <functional>

/// A connection to the X server on which nothing is waited for: replies are taken as they come, like events. Another
/// client that holds the server for itself, as window managers do while a window is moved, so holds up nobody here.
class ServerConversation final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ServerConversation)

public:
    /// Takes a connection that is not broken.
    explicit ServerConversation(Xcb::Connection connection);

    xcb_connection_t* connection() const { return m_connection.get(); }

    /// Receives the reply to a request, valid during the call; null when the server refused the request, as it does
    /// with that for a window that has gone.
    using Handler = std::function<void(const void* reply)>;

    /// Expects the reply to the request with the number @p sequence. To be called right after each request that has
    /// one.
    void expect(unsigned int sequence, Handler handler);

    /// Waits until all replies have come, and those to the requests that their handlers make, for at most @p limit.
    /// For the start.
    void settle(std::chrono::milliseconds limit);

Q_SIGNALS:
    void eventCame(const xcb_generic_event_t& event);
    /// The connection has broken.
    void ended();

private:
    struct Expected
    {
        unsigned int sequence;
        Handler handler;
    };

    void read();
    bool takeReplies();
    bool takeEvents();

    Xcb::Connection m_connection;
    std::deque<Expected> m_expected;
};
