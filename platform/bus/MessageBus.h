// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

#include <QByteArray>
#include <QtGlobal>

#include <chrono>
#include <deque>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

class QObject;

struct sd_bus;
struct sd_event;

/// This process's connection to a message bus (D-Bus), served by a thread of its own, which alone touches the
/// connection. Why so, and why not the toolkit's own: docs/decisions/bus-thread.md.
///
/// Nothing here ever waits for the bus or for another process: not the first use (the connection is made in the
/// background), not a call, not the end of the process (messages that the bus has not taken yet hold it up for 0.2
/// seconds at most). Work given to the bus from any thread runs in the order given. A bus that is absent or goes away
/// is an ordinary state, logged once; there is no second attempt.
class MessageBus final
{
public:
    /// The bus of the user's session. Connected on first use.
    static MessageBus& session();
    /// The bus of the whole machine. Connected on first use.
    static MessageBus& system();

    ~MessageBus();
    Q_DISABLE_COPY_MOVE(MessageBus)

    /// Runs on the bus thread with the connection, or with null when there is no bus (any more). Must not block.
    using Task = std::function<void(sd_bus* connection)>;
    /// The arguments of a message, as BusValues tells them.
    using Arguments = std::vector<PropertyList::Value>;
    /// Receives, on the bus thread, the answer to a call: null when it failed, ran into its time-out or there is no
    /// bus.
    using Reader = std::function<void(const Arguments* reply)>;

    struct Method
    {
        const char* destination;
        QByteArray path;
        const char* interface;
        const char* member;
    };

    /// Runs @p task on the bus thread.
    void run(Task task);

    /// Calls @p method. @p reader is called exactly once, unless the process ends first.
    void call(
        const Method& method, const Arguments& arguments, std::chrono::milliseconds timeout, const Reader& reader);

    /// Calls @p method, makes a yes or no of the reply with @p interpret (on the bus thread, null as above), and hands
    /// that to @p answered on the thread of @p context, unless that has been destroyed by then.
    void ask(const Method& method, const Arguments& arguments, std::chrono::milliseconds timeout,
        const std::function<bool(const Arguments* reply)>& interpret, QObject* context,
        const std::function<void(bool)>& answered);

    /// Calls @p lost on the bus thread once the connection is lost or cannot be made; at once when that is so already.
    /// The handler is kept until the end of the bus thread.
    void whenLost(std::function<void()> lost);

    /// The loop of the bus thread, for timers; for tasks only.
    sd_event* eventLoop() const { return m_loop.get(); }

private:
    enum class Kind { Session, System };

    struct Unref
    {
        void operator()(sd_event* loop) const;
        void operator()(sd_bus* connection) const;
    };

    class PendingCall;

    explicit MessageBus(Kind kind);

    sd_bus* connection() const { return m_lost ? nullptr : m_connection.get(); }

    void serve();
    int connectToBus();
    void setLost(int error);
    void runTasks();
    void send(
        const Method& method, const Arguments& arguments, std::chrono::milliseconds timeout, const Reader& reader);
    void drain() const;

    Kind m_kind;
    int m_wakeUp;
    std::mutex m_mutex;
    /// Guarded by the mutex.
    std::deque<Task> m_tasks;
    bool m_stopping = false;
    /// For the bus thread alone.
    std::unique_ptr<sd_event, Unref> m_loop;
    std::unique_ptr<sd_bus, Unref> m_connection;
    std::list<PendingCall> m_calls;
    std::deque<std::function<void()>> m_lostHandlers;
    bool m_lost = false;
    bool m_finished = false;
    std::thread m_thread;
};
