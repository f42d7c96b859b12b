// SPDX-License-Identifier: MIT
#include "TrayPlace.h"

#include <platform/bus/MessageBus.h>

#include <QSocketNotifier>

#include <xcb/xcb.h>

#include <chrono>
#include <cstdlib>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto watcher = "org.kde.StatusNotifierWatcher";
constexpr auto watcherPath = "/StatusNotifierWatcher";
constexpr auto answerTimeout = 2s;

template <typename Type>
using Reply = std::unique_ptr<Type, decltype(&std::free)>;

xcb_atom_t atom(xcb_connection_t* connection, const QByteArray& name)
{
    const auto request = xcb_intern_atom(connection, 0, quint16(name.size()), name.constData());
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, request, nullptr), &std::free);
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

} // namespace

void TrayPlace::Disconnect::operator()(xcb_connection_t* connection) const
{
    xcb_disconnect(connection);
}

TrayPlace::TrayPlace(QObject* parent)
    : QObject(parent)
{
}

TrayPlace::~TrayPlace() = default;

void TrayPlace::look()
{
    MessageBus& bus = MessageBus::session();
    bus.followService(watcher, this, [this](const QString& owner) {
        if (!owner.isEmpty()) {
            askNotifierHost();
        } else {
            lookForClassic();
        }
    });
    bus.subscribe({watcher, watcherPath, watcher, "StatusNotifierHostRegistered"}, this,
        [this](const MessageBus::Signal&) { tell(Kind::StatusNotifier); });
}

/// A watcher without a host is no place: nobody shows what it knows.
void TrayPlace::askNotifierHost()
{
    const MessageBus::Method method{watcher, watcherPath, "org.freedesktop.DBus.Properties", "Get"};
    MessageBus::session().ask(
        method, {QString::fromLatin1(watcher), QStringLiteral("IsStatusNotifierHostRegistered")}, answerTimeout,
        [](const MessageBus::Arguments* reply) {
            return reply != nullptr && !reply->empty() && reply->front().integerValue() != 0;
        },
        this,
        [this](bool hasHost) {
            if (hasHost) {
                tell(Kind::StatusNotifier);
            } else {
                lookForClassic();
            }
        });
}

void TrayPlace::lookForClassic()
{
    if (m_isFound || m_connection || !qEnvironmentVariableIsSet("DISPLAY")) {
        return;
    }
    int screenNumber = 0;
    m_connection.reset(xcb_connect(nullptr, &screenNumber));
    xcb_connection_t* const connection = m_connection.get();
    if (xcb_connection_has_error(connection) != 0) {
        return;
    }
    // Whoever becomes the tray says so to the root window.
    xcb_screen_iterator_t screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int i = 0; i < screenNumber && screen.rem > 1; ++i) {
        xcb_screen_next(&screen);
    }
    const quint32 mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection, screen.data->root, XCB_CW_EVENT_MASK, &mask);
    m_selection = atom(connection, "_NET_SYSTEM_TRAY_S" + QByteArray::number(screenNumber));
    auto* const notifier = new QSocketNotifier(xcb_get_file_descriptor(connection), QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        readEvents();
        notifier->setEnabled(xcb_connection_has_error(m_connection.get()) == 0);
    });
    if (hasClassicOwner()) {
        tell(Kind::Classic);
    }
}

bool TrayPlace::hasClassicOwner() const
{
    const auto request = xcb_get_selection_owner(m_connection.get(), m_selection);
    const Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(m_connection.get(), request, nullptr), &std::free);
    return reply && reply->owner != XCB_WINDOW_NONE;
}

void TrayPlace::readEvents()
{
    bool isAnnounced = false;
    while (const auto event = Reply<xcb_generic_event_t>(xcb_poll_for_event(m_connection.get()), &std::free)) {
        isAnnounced = isAnnounced || (event->response_type & 0x7F) == XCB_CLIENT_MESSAGE;
    }
    if (isAnnounced && hasClassicOwner()) {
        tell(Kind::Classic);
    }
}

void TrayPlace::tell(Kind kind)
{
    if (!std::exchange(m_isFound, true)) {
        Q_EMIT found(kind);
    }
}
