// SPDX-License-Identifier: MIT
#include "MessageBus.h"

#include "BusSubscriptions.h"
#include "BusValues.h"

#include <platform/servers/ServerReturn.h>
#include <product/Product.h>

#include <QFutureWatcher>
#include <QLoggingCategory>
#include <QPromise>

#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <optional>
#include <utility>

using namespace std::chrono_literals;

namespace {

Q_LOGGING_CATEGORY(log, PRODUCT_NAME ".bus")

constexpr auto drainTimeout = 200ms;
constexpr auto systemAddress = "unix:path=/run/dbus/system_bus_socket";

uint64_t microseconds(std::chrono::steady_clock::duration time)
{
    return uint64_t(std::chrono::duration_cast<std::chrono::microseconds>(time).count());
}

/// The path of the socket that a bus address names; nothing where it names none.
QByteArray socketAt(const QByteArray& address)
{
    const QByteArray begin = "unix:path=";
    const qsizetype end = address.indexOf(';');
    const QByteArray first = address.left(end);
    return first.startsWith(begin) ? first.sliced(begin.size()).split(',').first() : QByteArray();
}

/// Calls @p handler with @p self for a signal that the library makes up itself.
int matchLocal(sd_bus* connection, const char* member, void* self, sd_bus_message_handler_t handler)
{
    constexpr auto local = "org.freedesktop.DBus.Local";
    return sd_bus_match_signal_async(
        connection, nullptr, local, "/org/freedesktop/DBus/Local", local, member, handler, nullptr, self);
}

} // namespace

/// A call that waits for its reply. The time-out is kept here because the library's own does not run before the
/// connection stands, which with a bus that hangs is never.
class MessageBus::PendingCall final
{
public:
    PendingCall(MessageBus* bus, Reader reader)
        : m_bus(bus)
        , m_reader(std::move(reader))
    {
    }

    ~PendingCall()
    {
        sd_bus_slot_unref(m_slot);
        sd_event_source_unref(m_timer);
    }

    Q_DISABLE_COPY_MOVE(PendingCall)

    bool start(sd_bus* connection, sd_bus_message* message, std::chrono::milliseconds timeout)
    {
        return sd_bus_call_async(connection, &m_slot, message, &PendingCall::answered, this, UINT64_MAX) >= 0 &&
               sd_event_add_time_relative(m_bus->eventLoop(), &m_timer, CLOCK_MONOTONIC, microseconds(timeout), 0,
                   &PendingCall::timedOut, this) >= 0;
    }

    void finish(const Arguments* reply)
    {
        const Reader reader = std::move(m_reader);
        m_bus->m_calls.remove_if([this](const PendingCall& call) { return &call == this; });
        reader(reply);
    }

private:
    static int answered(sd_bus_message* reply, void* call, sd_bus_error* /*error*/)
    {
        const Arguments arguments = BusValues::readAll(reply);
        static_cast<PendingCall*>(call)->finish(
            sd_bus_message_is_method_error(reply, nullptr) > 0 ? nullptr : &arguments);
        return 0;
    }

    static int timedOut(sd_event_source* /*timer*/, uint64_t /*time*/, void* call)
    {
        static_cast<PendingCall*>(call)->finish(nullptr);
        return 0;
    }

    MessageBus* m_bus;
    Reader m_reader;
    sd_bus_slot* m_slot = nullptr;
    sd_event_source* m_timer = nullptr;
};

void MessageBus::Unref::operator()(sd_event* loop) const
{
    sd_event_unref(loop);
}

void MessageBus::Unref::operator()(sd_bus* connection) const
{
    // Closing does not flush, and so waits for nothing.
    sd_bus_close_unref(connection);
}

MessageBus& MessageBus::session()
{
    static MessageBus bus(Kind::Session);
    return bus;
}

MessageBus& MessageBus::system()
{
    static MessageBus bus(Kind::System);
    return bus;
}

MessageBus::MessageBus(QByteArray address)
    : MessageBus(Kind::Other, std::move(address))
{
}

MessageBus::MessageBus(Kind kind, QByteArray address)
    : m_kind(kind)
    , m_address(std::move(address))
    , m_wakeUp(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    , m_thread([this] { serve(); })
{
}

MessageBus::~MessageBus()
{
    {
        const std::scoped_lock guard(m_mutex);
        m_stopping = true;
    }
    ::eventfd_write(m_wakeUp, 1);
    m_thread.join();
    ::close(m_wakeUp);
}

void MessageBus::run(Task task)
{
    {
        const std::scoped_lock guard(m_mutex);
        m_tasks.push_back(std::move(task));
    }
    ::eventfd_write(m_wakeUp, 1);
}

void MessageBus::call(
    const Method& method, const Arguments& arguments, std::chrono::milliseconds timeout, const Reader& reader)
{
    run([=, this](sd_bus*) { send(method, arguments, timeout, reader); });
}

void MessageBus::request(const Method& method, const Arguments& arguments, std::chrono::milliseconds timeout,
    QObject* context, const Reader& answered)
{
    const auto promise = std::make_shared<QPromise<std::optional<Arguments>>>();
    promise->start();
    auto* watcher = new QFutureWatcher<std::optional<Arguments>>(context);
    QObject::connect(watcher, &QFutureWatcherBase::finished, context, [watcher, answered] {
        watcher->deleteLater();
        if (!watcher->isCanceled()) {
            const std::optional<Arguments> reply = watcher->result();
            answered(reply ? &*reply : nullptr);
        }
    });
    watcher->setFuture(promise->future());
    call(method, arguments, timeout, [promise](const Arguments* reply) {
        promise->addResult(reply != nullptr ? std::optional(*reply) : std::nullopt);
        promise->finish();
    });
}

void MessageBus::ask(const Method& method, const Arguments& arguments, std::chrono::milliseconds timeout,
    const std::function<bool(const Arguments*)>& interpret, QObject* context, const std::function<void(bool)>& answered)
{
    request(method, arguments, timeout, context,
        [interpret, answered](const Arguments* reply) { answered(interpret(reply)); });
}

void MessageBus::subscribe(const SignalPattern& pattern, QObject* context, std::function<void(const Signal&)> heard)
{
    const std::shared_ptr<BusRelay> relay = relayFor(context);
    QObject::connect(relay.get(), &BusRelay::heard, context, std::move(heard), Qt::QueuedConnection);
    run([this, pattern, relay](sd_bus*) { m_subscriptions->subscribe(pattern, relay); });
}

void MessageBus::followService(const QByteArray& name, QObject* context, std::function<void(const QString&)> changed)
{
    const std::shared_ptr<BusRelay> relay = relayFor(context);
    QObject::connect(relay.get(), &BusRelay::ownerChanged, context, std::move(changed), Qt::QueuedConnection);
    run([this, name, relay](sd_bus*) { m_subscriptions->followService(name, relay); });
}

std::shared_ptr<BusRelay> MessageBus::relayFor(QObject* context)
{
    auto relay = std::make_shared<BusRelay>();
    // The relay as the receiver: when it has gone with the bus, there is nothing to forget.
    QObject::connect(
        context, &QObject::destroyed, relay.get(),
        [this, forgotten = relay.get()] { run([this, forgotten](sd_bus*) { m_subscriptions->forget(forgotten); }); },
        Qt::DirectConnection);
    return relay;
}

void MessageBus::whenLost(std::function<void()> lost)
{
    run([this, lost = std::move(lost)](sd_bus* connection) {
        if (connection == nullptr) {
            lost();
        }
        m_lostHandlers.push_back(lost);
    });
}

void MessageBus::send(
    const Method& method, const Arguments& arguments, std::chrono::milliseconds timeout, const Reader& reader)
{
    sd_bus_message* message = nullptr;
    if (connection() == nullptr ||
        sd_bus_message_new_method_call(connection(), &message, method.destination.constData(), method.path.constData(),
            method.interface.constData(), method.member.constData()) < 0) {
        reader(nullptr);
        return;
    }
    bool isComplete = true;
    for (size_t at = 0; at < arguments.size() && isComplete; ++at) {
        const char type = qsizetype(at) < method.types.size() ? method.types[qsizetype(at)] : '\0';
        isComplete = BusValues::append(message, arguments[at], type);
    }
    PendingCall& pending = m_calls.emplace_back(this, reader);
    if (!isComplete || !pending.start(connection(), message, timeout)) {
        pending.finish(nullptr);
    }
    sd_bus_message_unref(message);
}

void MessageBus::serve()
{
    sd_event* loop = nullptr;
    sd_event_new(&loop);
    m_loop.reset(loop);
    sd_event_add_io(
        loop, nullptr, m_wakeUp, EPOLLIN,
        [](sd_event_source*, int, uint32_t, void* self) {
            static_cast<MessageBus*>(self)->runTasks();
            return 0;
        },
        this);
    m_subscriptions = std::make_unique<BusSubscriptions>();
    if (m_kind == Kind::System) {
        followReturn();
    }
    if (const int result = connectToBus(); result < 0) {
        setLost(-result);
    }
    // The loop is left without its own exit, on which the library would flush, and wait for a bus that hangs.
    while (!m_finished && sd_event_run(loop, UINT64_MAX) >= 0) {
    }
    drain();
    m_calls.clear();
    m_subscriptions.reset();
    m_connection.reset();
    m_loop.reset();
    m_return.reset();
}

int MessageBus::open(sd_bus*& opened) const
{
    if (m_kind != Kind::Other) {
        return m_kind == Kind::Session ? sd_bus_open_user(&opened) : sd_bus_open_system(&opened);
    }
    int result = sd_bus_new(&opened);
    if (result >= 0 && (result = sd_bus_set_address(opened, m_address.constData())) >= 0 &&
        (result = sd_bus_set_bus_client(opened, 1)) >= 0) {
        result = sd_bus_start(opened);
    }
    return result;
}

/// What a line in the log begins with when it is not there.
const char* MessageBus::name() const
{
    switch (m_kind) {
    case Kind::Session:
        return "no session bus:";
    case Kind::System:
        return "no system bus:";
    case Kind::Other:
        break;
    }
    return "no bus at its address:";
}

int MessageBus::connectToBus()
{
    sd_bus* opened = nullptr;
    const int result = open(opened);
    m_connection.reset(opened);
    if (result < 0) {
        return result;
    }
    m_lost = false;
    sd_bus_set_connected_signal(opened, 1);
    // The library makes this signal up when the connection ends, whatever the cause, and the other when it stands.
    const int matched = matchLocal(opened, "Disconnected", this, [](sd_bus_message*, void* self, sd_bus_error*) {
        static_cast<MessageBus*>(self)->setLost(ECONNRESET);
        return 0;
    });
    matchLocal(opened, "Connected", this, [](sd_bus_message*, void* self, sd_bus_error*) {
        static_cast<MessageBus*>(self)->setConnected();
        return 0;
    });
    m_subscriptions->attach(opened);
    return matched < 0 ? matched : sd_bus_attach_event(opened, eventLoop(), SD_EVENT_PRIORITY_NORMAL);
}

void MessageBus::followReturn()
{
    const QByteArray address =
        qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS", QLatin1StringView(systemAddress)).toLocal8Bit();
    m_return = std::make_unique<ServerReturn>(socketAt(address));
    sd_event_add_io(
        eventLoop(), nullptr, m_return->descriptor(), EPOLLIN,
        [](sd_event_source*, int, uint32_t, void* self) {
            auto* const bus = static_cast<MessageBus*>(self);
            if (bus->m_return->isDue()) {
                bus->connectAgain();
            }
            return 0;
        },
        this);
}

void MessageBus::connectAgain()
{
    if (!m_lost) {
        return;
    }
    m_connection.reset();
    if (const int result = connectToBus(); result < 0) {
        setLost(-result);
    }
}

void MessageBus::setConnected()
{
    if (m_return) {
        m_return->end();
    }
    if (std::exchange(m_isLossTold, false)) {
        qCInfo(log) << "the system bus is there again";
    }
}

void MessageBus::setLost(int error)
{
    m_lost = true;
    m_subscriptions->attach(nullptr);
    if (!std::exchange(m_isLossTold, true)) {
        qCWarning(log).noquote() << name() << std::strerror(error);
        for (const std::function<void()>& handler : m_lostHandlers) {
            handler();
        }
    }
    if (m_return) {
        m_return->wait();
    }
}

void MessageBus::runTasks()
{
    eventfd_t count = 0;
    ::eventfd_read(m_wakeUp, &count);
    std::deque<Task> tasks;
    {
        const std::scoped_lock guard(m_mutex);
        tasks.swap(m_tasks);
        m_finished = m_stopping;
    }
    for (const Task& task : tasks) {
        task(connection());
    }
}

/// Gives the bus a moment to take what was sent just before the end.
void MessageBus::drain() const
{
    const auto deadline = std::chrono::steady_clock::now() + drainTimeout;
    while (connection() != nullptr) {
        uint64_t queued = 0;
        const bool idle =
            sd_bus_is_ready(connection()) > 0 && (sd_bus_get_n_queued_write(connection(), &queued) < 0 || queued == 0);
        const auto remaining = deadline - std::chrono::steady_clock::now();
        if (idle || remaining <= 0ms || sd_bus_process(connection(), nullptr) < 0 ||
            sd_bus_wait(connection(), microseconds(remaining)) < 0) {
            return;
        }
    }
}
