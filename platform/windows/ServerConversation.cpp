// SPDX-License-Identifier: MIT
#include "ServerConversation.h"

#include <QDeadlineTimer>

#include <poll.h>
#include <xcb/xcbext.h>

#include <utility>

ServerConversation::ServerConversation(Xcb::Connection connection)
    : m_connection(std::move(connection))
{
    Xcb::whenReadable(m_connection, this, [this] { read(); });
    // What has been read along with earlier replies is not told by the socket any more.
    QMetaObject::invokeMethod(this, &ServerConversation::read, Qt::QueuedConnection);
}

void ServerConversation::expect(unsigned int sequence, Handler handler)
{
    m_expected.push_back({sequence, std::move(handler)});
}

void ServerConversation::settle(std::chrono::milliseconds limit)
{
    const QDeadlineTimer deadline(limit);
    for (read(); !m_expected.empty() && !Xcb::isBroken(m_connection) && !deadline.hasExpired(); read()) {
        pollfd socket{xcb_get_file_descriptor(connection()), POLLIN, 0};
        poll(&socket, 1, int(deadline.remainingTime()));
    }
}

void ServerConversation::read()
{
    bool hasNews = true;
    while (hasNews) {
        // To send may read, too: what came then is looked for below.
        xcb_flush(connection());
        hasNews = takeReplies();
        hasNews = takeEvents() || hasNews;
    }
    if (Xcb::isBroken(m_connection)) {
        m_expected.clear();
        // Later, when nothing of this object is at work that a receiver may want to delete.
        QMetaObject::invokeMethod(this, &ServerConversation::ended, Qt::QueuedConnection);
    }
}

bool ServerConversation::takeReplies()
{
    bool hasTaken = false;
    while (!m_expected.empty()) {
        void* reply = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (xcb_poll_for_reply(connection(), m_expected.front().sequence, &reply, &error) == 0) {
            break;
        }
        const Xcb::Reply<void> ownedReply(reply);
        const Xcb::Reply<xcb_generic_error_t> ownedError(error);
        const Handler handler = std::move(m_expected.front().handler);
        m_expected.pop_front();
        handler(reply);
        hasTaken = true;
    }
    return hasTaken;
}

bool ServerConversation::takeEvents()
{
    bool hasTaken = false;
    while (const auto event = Xcb::Reply<xcb_generic_event_t>(xcb_poll_for_event(connection()))) {
        Q_EMIT eventCame(*event);
        hasTaken = true;
    }
    return hasTaken;
}
