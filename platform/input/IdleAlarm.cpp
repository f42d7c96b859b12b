// SPDX-License-Identifier: MIT
#include "IdleAlarm.h"

#include <QByteArrayView>
#include <QLoggingCategory>

#include <xcb/sync.h>

#include <algorithm>
#include <utility>

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.input")

/// The server's counter of the milliseconds since the last input; 0 where it has none.
quint32 idleCounter(xcb_connection_t* connection)
{
    const Xcb::Reply<xcb_sync_initialize_reply_t> version(
        xcb_sync_initialize_reply(connection, xcb_sync_initialize(connection, 3, 1), nullptr));
    const Xcb::Reply<xcb_sync_list_system_counters_reply_t> counters(
        xcb_sync_list_system_counters_reply(connection, xcb_sync_list_system_counters(connection), nullptr));
    if (!version || !counters) {
        return 0;
    }
    auto counter = xcb_sync_list_system_counters_counters_iterator(counters.get());
    for (; counter.rem > 0; xcb_sync_systemcounter_next(&counter)) {
        // The library's own look-up of the name counts the padding of the structure, which the protocol has not.
        const auto* const text = reinterpret_cast<const char*>(&counter.data->name_len + 1);
        const QByteArrayView name(text, counter.data->name_len);
        if (name == "IDLETIME") {
            return counter.data->counter;
        }
    }
    return 0;
}

} // namespace

std::unique_ptr<IdleAlarm> IdleAlarm::ofServer()
{
    Xcb::Connection connection = Xcb::connectToServer();
    if (!connection) {
        return nullptr;
    }
    const xcb_query_extension_reply_t* const extension = xcb_get_extension_data(connection.get(), &xcb_sync_id);
    const quint32 counter = extension && extension->present != 0 ? idleCounter(connection.get()) : 0;
    if (counter == 0) {
        qCWarning(log).noquote() << "The X server does not count how long the user is idle";
        return nullptr;
    }
    return std::unique_ptr<IdleAlarm>(new IdleAlarm(std::move(connection), counter, extension->first_event));
}

IdleAlarm::IdleAlarm(Xcb::Connection connection, quint32 counter, quint8 firstEvent)
    : m_connection(std::move(connection))
    , m_counter(counter)
    , m_firstEvent(firstEvent)
{
    Xcb::whenReadable(m_connection, this, [this] { readEvents(); });
}

IdleAlarm::~IdleAlarm() = default;

void IdleAlarm::set(std::chrono::milliseconds time)
{
    if (m_alarm != 0) {
        xcb_sync_destroy_alarm(m_connection.get(), std::exchange(m_alarm, 0));
    }
    if (time.count() > 0) {
        // A transition, and no step: the alarm stays set, and rings each time that the counter comes past.
        xcb_sync_create_alarm_value_list_t values{};
        values.counter = m_counter;
        values.valueType = XCB_SYNC_VALUETYPE_ABSOLUTE;
        values.value = {qint32(time.count() >> 32), quint32(time.count())};
        values.testType = XCB_SYNC_TESTTYPE_POSITIVE_TRANSITION;
        values.events = 1;
        m_alarm = xcb_generate_id(m_connection.get());
        xcb_sync_create_alarm_aux(m_connection.get(), m_alarm,
            XCB_SYNC_CA_COUNTER | XCB_SYNC_CA_VALUE_TYPE | XCB_SYNC_CA_VALUE | XCB_SYNC_CA_TEST_TYPE |
                XCB_SYNC_CA_DELTA | XCB_SYNC_CA_EVENTS,
            &values);
    }
    xcb_flush(m_connection.get());
}

void IdleAlarm::readEvents()
{
    while (const auto event = Xcb::Reply<xcb_generic_event_t>(xcb_poll_for_event(m_connection.get()))) {
        const auto& notification = reinterpret_cast<const xcb_sync_alarm_notify_event_t&>(*event);
        if ((event->response_type & 0x7F) == m_firstEvent + XCB_SYNC_ALARM_NOTIFY && notification.alarm == m_alarm &&
            notification.state != XCB_SYNC_ALARMSTATE_DESTROYED) {
            Q_EMIT rang();
        }
    }
}
