// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QHash>
#include <QtGlobal>

#include <chrono>

/// Waits for a server that has gone: says when it is worth trying to connect again. That is a few times, at growing
/// distances, after it has gone, and shortly after its socket, or a folder on the way to it, has appeared; in between
/// nothing wakes up.
///
/// It belongs to no kind of event loop: whoever connects polls descriptor() in the loop that serves the connection. For
/// one thread at a time. Where the system has no descriptors left it never says anything.
class ServerReturn final
{
public:
    /// @p socket is the path at which the server listens; where it is empty only the tries after the loss are made.
    explicit ServerReturn(QByteArray socket);
    ~ServerReturn();
    Q_DISABLE_COPY_MOVE(ServerReturn)

    /// Readable when isDue() is to be called.
    int descriptor() const { return m_descriptor; }

    /// The server has gone, or a try has failed: waits for the next.
    void wait();
    /// The server has answered: the next loss begins with the short distances again.
    void end();
    /// Takes what has made the descriptor readable: whether it is time to try.
    bool isDue();

private:
    void watchFolders();
    bool hasAppeared();
    void arm(std::chrono::milliseconds delay) const;

    QByteArray m_socket;
    /// Tells of the other two.
    int m_descriptor;
    int m_timer;
    /// An inotify instance while the server is waited for, else -1.
    int m_folders = -1;
    /// What is waited for in each watched folder, by the number of its watch.
    QHash<int, QByteArray> m_awaited;
    int m_tries = 0;
};
