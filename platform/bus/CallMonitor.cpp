// SPDX-License-Identifier: MIT
#include "CallMonitor.h"

#include "BusSubscriptions.h"
#include "BusValues.h"

#include <product/Product.h>

#include <QLoggingCategory>

#include <systemd/sd-bus.h>

#include <cstring>
#include <utility>

namespace {

Q_LOGGING_CATEGORY(log, PRODUCT_NAME ".bus.monitor")

} // namespace

/// The connection, for the bus thread alone.
class CallMonitor::Listener final
{
public:
    Listener(QByteArray interface, QByteArray member)
        : m_interface(std::move(interface))
        , m_member(std::move(member))
    {
    }

    ~Listener() { close(); }

    Q_DISABLE_COPY_MOVE(Listener)

    const BusRelay& relay() const { return m_relay; }

    void open(sd_event* loop, const char* address)
    {
        const QByteArray rule = "type='method_call',interface='" + m_interface + "',member='" + m_member + '\'';
        int result = sd_bus_new(&m_connection);
        // Of a connection that monitors, the library answers no calls.
        if (result < 0 || (result = sd_bus_set_monitor(m_connection, 1)) < 0 ||
            (result = sd_bus_negotiate_fds(m_connection, 0)) < 0 ||
            (result = sd_bus_set_bus_client(m_connection, 1)) < 0 ||
            (result = sd_bus_set_address(m_connection, address)) < 0 || (result = sd_bus_start(m_connection)) < 0 ||
            (result = sd_bus_add_filter(m_connection, nullptr, &Listener::receive, this)) < 0 ||
            (result = sd_bus_call_method_async(m_connection, nullptr, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                 "org.freedesktop.DBus.Monitoring", "BecomeMonitor", &Listener::answered, this, "asu", 1,
                 rule.constData(), 0U)) < 0 ||
            (result = sd_bus_attach_event(m_connection, loop, SD_EVENT_PRIORITY_NORMAL)) < 0) {
            qCInfo(log).noquote() << "cannot listen to" << m_interface << "-" << std::strerror(-result);
            close();
        }
    }

    void close() { m_connection = sd_bus_close_unref(m_connection); }

private:
    static int answered(sd_bus_message* reply, void* self, sd_bus_error* /*error*/)
    {
        if (const sd_bus_error* const error = sd_bus_message_get_error(reply); error != nullptr) {
            qCInfo(log).noquote() << "cannot listen to" << static_cast<Listener*>(self)->m_interface << "-"
                                  << error->message;
        }
        return 1;
    }

    static int receive(sd_bus_message* message, void* self, sd_bus_error* /*error*/)
    {
        auto* const listener = static_cast<Listener*>(self);
        if (sd_bus_message_is_method_call(message, listener->m_interface.constData(), listener->m_member.constData()) <=
            0) {
            return 0;
        }
        Q_EMIT listener->m_relay.heard({QString::fromUtf8(sd_bus_message_get_path(message)),
            QString::fromLatin1(listener->m_member), BusValues::readAll(message)});
        return 1;
    }

    QByteArray m_interface;
    QByteArray m_member;
    BusRelay m_relay;
    sd_bus* m_connection = nullptr;
};

CallMonitor::CallMonitor(const QByteArray& interface, const QByteArray& member, QObject* parent)
    : QObject(parent)
    , m_listener(std::make_shared<Listener>(interface, member))
{
    connect(&m_listener->relay(), &BusRelay::heard, this, &CallMonitor::called, Qt::QueuedConnection);
}

CallMonitor::~CallMonitor()
{
    MessageBus::session().run([listener = m_listener](sd_bus*) { listener->close(); });
}

void CallMonitor::start()
{
    MessageBus& bus = MessageBus::session();
    bus.run([listener = m_listener, &bus](sd_bus* connection) {
        const char* address = nullptr;
        if (connection != nullptr && sd_bus_get_address(connection, &address) >= 0) {
            listener->open(bus.eventLoop(), address);
        }
    });
}
