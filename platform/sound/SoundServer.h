// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QtGlobal>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

class ServerReturn;

struct pa_context;
struct pa_threaded_mainloop;

/// The process's one connection to the session's sound server, by the PulseAudio protocol (which PipeWire serves too).
/// Why this and not the toolkit's players: docs/decisions/sound-output.md.
///
/// A thread of the library serves the connection; it sleeps while nothing happens. Everything here, and every call of
/// the library, is made with the server locked (`SoundServer::Lock lock(server)`); the callbacks of the library run
/// with the lock held. Nobody holds the lock while waiting, decoding or reading a file, so that taking it never takes
/// long, whatever the server does.
class SoundServer final
{
    Q_DISABLE_COPY_MOVE(SoundServer)

public:
    using Lock = std::unique_lock<SoundServer>;

    /// How long a server may keep silent before it counts as hung.
    static constexpr std::chrono::milliseconds patience{1000};

    /// Made at the first use, and there until the process ends.
    static SoundServer& instance();

    void lock();
    void unlock();

    /// Starts to connect, unless that is done or under way. A lost connection is made anew by the next call.
    void connect();
    /// Connects, and from now on whenever the server is there again after the connection has been lost or could not be
    /// made (see ServerReturn).
    void stayConnected();
    /// Closes the connection with everything on it: what a server that has hung deserves.
    void disconnect();

    bool isConnecting() const { return m_context != nullptr && !m_ready; }

    /// The context of the established connection, or null.
    pa_context* context() const;
    /// Connects and waits until the connection stands, fails or @p timeout is over. The context, or null with the
    /// reason in lastError().
    pa_context* waitForContext(Lock& lock, std::chrono::milliseconds timeout);
    /// Why the last call of the library failed, or why there is no connection.
    QString lastError() const;
    /// Tells in the log that nothing is heard for want of a server: once, until there has been a connection.
    void reportAbsence();

    /// Calls @p handler, on the library's thread, whenever a connection has been made.
    void whenConnected(std::function<void(pa_context*)> handler);
    /// Calls @p handler, on any thread, whenever a connection is lost or could not be made.
    void whenLost(std::function<void()> handler);

    /// Lets go of the lock until @p condition holds; false when it does not within @p timeout.
    template <typename Condition>
    bool wait(Lock& lock, std::chrono::milliseconds timeout, Condition condition)
    {
        return m_changed.wait_for(lock, timeout, condition);
    }

    /// Has every waiting thread look at its condition again.
    void notifyWaiting() { m_changed.notify_all(); }

private:
    SoundServer();

    void lookForReturn();
    static void contextChanged(pa_context* context, void* server);
    void contextIsReady();
    void dropContext(const QString& reason);

    pa_threaded_mainloop* m_loop;
    pa_context* m_context = nullptr;
    bool m_ready = false;
    /// Null until the connection is to stay.
    std::unique_ptr<ServerReturn> m_return;
    QString m_connectionError;
    bool m_isAbsenceReported = false;
    std::vector<std::function<void(pa_context*)>> m_connectedHandlers;
    std::vector<std::function<void()>> m_lostHandlers;
    std::condition_variable_any m_changed;
};
