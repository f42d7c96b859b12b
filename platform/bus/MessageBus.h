// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <chrono>
#include <deque>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

class BusRelay;
class BusSubscriptions;
class QObject;
class ServerReturn;

struct sd_bus;
struct sd_event;

/// This process's connection to a message bus (D-Bus), served by a thread of its own, which alone touches the
/// connection. Why so, and why not the toolkit's own: docs/decisions/bus-thread.md.
///
/// Nothing here ever waits for the bus or for another process: not the first use (the connection is made in the
/// background), not a call, not the end of the process (messages that the bus has not taken yet hold it up for 0.2
/// seconds at most). Work given to the bus from any thread runs in the order given. A bus that is absent or goes away
/// is an ordinary state, logged once. The session's bus is the session, so there is no second attempt; the system's may
/// be restarted, and is connected to again (see ServerReturn). What was subscribed to then counts again.
class MessageBus final
{
public:
    /// The bus of the user's session. Connected on first use.
    static MessageBus& session();
    /// The bus of the whole machine. Connected on first use.
    static MessageBus& system();

    /// The bus at @p address, in D-Bus's own notation (`unix:path=/run/dbus/socket`). There is no second attempt.
    /// Contexts of its subscriptions and requests must be destroyed before it.
    explicit MessageBus(QByteArray address);
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
        QByteArray destination;
        QByteArray path;
        QByteArray interface;
        QByteArray member;
        /// The types of the arguments, as far as there are integers among them of other types than x (see BusValues);
        /// only the basic ones in front.
        QByteArray types = {};
    };

    /// Which signals are meant; what is empty matches all.
    struct SignalPattern
    {
        /// The well-known name of the service that sends them. What others send does not count.
        QByteArray service;
        QByteArray path;
        QByteArray interface;
        QByteArray member;
    };

    struct Signal
    {
        QString path;
        QString member;
        Arguments arguments;
        /// The unique name of the connection that has sent it.
        QString sender = {};

        /// Null where there are not so many.
        PropertyList::Value argument(size_t index) const { return valueAt(&arguments, index); }
    };

    /// The value at @p index; null where @p arguments has not so many, or is null itself.
    static PropertyList::Value valueAt(const Arguments* arguments, size_t index)
    {
        return arguments != nullptr && index < arguments->size() ? (*arguments)[index] : PropertyList::Value();
    }

    /// Runs @p task on the bus thread.
    void run(Task task);

    /// Calls @p method. @p reader is called exactly once, unless the process ends first.
    void call(
        const Method& method, const Arguments& arguments, std::chrono::milliseconds timeout, const Reader& reader);

    /// The same with the answer on the thread of @p context, unless that has been destroyed by then.
    void request(const Method& method, const Arguments& arguments, std::chrono::milliseconds timeout, QObject* context,
        const Reader& answered);

    /// The same with a yes or no, which @p interpret makes of the answer (null as above).
    void ask(const Method& method, const Arguments& arguments, std::chrono::milliseconds timeout,
        const std::function<bool(const Arguments* reply)>& interpret, QObject* context,
        const std::function<void(bool)>& answered);

    /// Calls @p heard on the thread of @p context, until that is destroyed, for every signal of @p pattern. Arguments
    /// are as BusValues tells them, 16 at most; of their number and types nothing is promised.
    void subscribe(const SignalPattern& pattern, QObject* context, std::function<void(const Signal& signal)> heard);

    /// Calls @p changed on the thread of @p context, until that is destroyed, with the unique name of the owner of the
    /// service @p name, or with nothing when it has none: once it is known, and at every change.
    void followService(const QByteArray& name, QObject* context, std::function<void(const QString& owner)> changed);

    /// Calls @p lost on the bus thread once the connection is lost or cannot be made; at once when that is so already.
    /// The handler is kept until the end of the bus thread.
    void whenLost(std::function<void()> lost);

    /// The loop of the bus thread, for timers; for tasks only.
    sd_event* eventLoop() const { return m_loop.get(); }

private:
    enum class Kind { Session, System, Other };

    struct Unref
    {
        void operator()(sd_event* loop) const;
        void operator()(sd_bus* connection) const;
    };

    class PendingCall;

    explicit MessageBus(Kind kind, QByteArray address = {});

    sd_bus* connection() const { return m_lost ? nullptr : m_connection.get(); }

    void serve();
    int open(sd_bus*& opened) const;
    const char* name() const;
    int connectToBus();
    void followReturn();
    void connectAgain();
    void setLost(int error);
    void setConnected();
    std::shared_ptr<BusRelay> relayFor(QObject* context);
    void runTasks();
    void send(
        const Method& method, const Arguments& arguments, std::chrono::milliseconds timeout, const Reader& reader);
    void drain() const;

    Kind m_kind;
    /// Of a bus of another kind.
    QByteArray m_address;
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
    std::unique_ptr<BusSubscriptions> m_subscriptions;
    /// Null for the session's bus.
    std::unique_ptr<ServerReturn> m_return;
    bool m_isLossTold = false;
    bool m_lost = false;
    bool m_finished = false;
    std::thread m_thread;
};
