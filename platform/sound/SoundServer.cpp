// SPDX-License-Identifier: MIT
#include "SoundServer.h"

#include <platform/servers/ServerReturn.h>
#include <product/Product.h>

#include <QLoggingCategory>

#include <pulse/context.h>
#include <pulse/error.h>
#include <pulse/mainloop-api.h>
#include <pulse/proplist.h>
#include <pulse/thread-mainloop.h>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, PRODUCT_NAME ".sound.server", QtInfoMsg)

QString errorText(const pa_context* context)
{
    return QString::fromUtf8(pa_strerror(pa_context_errno(context)));
}

/// Where the session's server listens, unless its settings say otherwise; nothing where that is no path.
QByteArray socketOfServer()
{
    // The first one of several, and that without the name of the machine on which it counts.
    QByteArray server = qgetenv("PULSE_SERVER").simplified().split(' ').first();
    server = server.mid(server.startsWith('{') ? server.indexOf('}') + 1 : 0);
    server = server.mid(server.startsWith("unix:") ? 5 : 0);
    if (!server.isEmpty()) {
        return server.startsWith('/') ? server : QByteArray();
    }
    QByteArray folder = qgetenv("PULSE_RUNTIME_PATH");
    if (folder.isEmpty()) {
        folder = qgetenv("XDG_RUNTIME_DIR") + "/pulse";
    }
    return folder + "/native";
}

} // namespace

SoundServer& SoundServer::instance()
{
    // Never destroyed: sounds that outlive main() and the threads that play them still use it.
    static auto& server = *new SoundServer;
    return server;
}

SoundServer::SoundServer()
    : m_loop(pa_threaded_mainloop_new())
{
    pa_threaded_mainloop_set_name(m_loop, "sound server");
    pa_threaded_mainloop_start(m_loop);
}

void SoundServer::lock()
{
    pa_threaded_mainloop_lock(m_loop);
}

void SoundServer::unlock()
{
    pa_threaded_mainloop_unlock(m_loop);
}

void SoundServer::connect()
{
    if (m_context != nullptr) {
        return;
    }
    pa_proplist* properties = pa_proplist_new();
    pa_proplist_sets(properties, PA_PROP_APPLICATION_NAME, PRODUCT_NAME);
    pa_proplist_sets(properties, PA_PROP_APPLICATION_ID, PRODUCT_BUNDLE_IDENTIFIER);
    m_context = pa_context_new_with_proplist(pa_threaded_mainloop_get_api(m_loop), nullptr, properties);
    pa_proplist_free(properties);
    pa_context_set_state_callback(m_context, contextChanged, this);
    // Starting a server is the session's business, and would be waited for here.
    if (pa_context_connect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0 && m_context != nullptr) {
        dropContext(errorText(m_context));
    }
}

void SoundServer::stayConnected()
{
    if (!m_return) {
        m_return = std::make_unique<ServerReturn>(socketOfServer());
        lookForReturn();
    }
    connect();
}

void SoundServer::lookForReturn()
{
    if (m_return->descriptor() < 0) {
        return;
    }
    pa_mainloop_api* const loop = pa_threaded_mainloop_get_api(m_loop);
    const auto look = [](pa_mainloop_api*, pa_io_event*, int, pa_io_event_flags_t, void* server) {
        auto* const self = static_cast<SoundServer*>(server);
        if (self->m_return->isDue()) {
            self->connect();
        }
    };
    loop->io_new(loop, m_return->descriptor(), PA_IO_EVENT_INPUT, look, this);
}

void SoundServer::disconnect()
{
    dropContext(u"it does not answer"_s);
}

pa_context* SoundServer::context() const
{
    return m_ready ? m_context : nullptr;
}

pa_context* SoundServer::waitForContext(Lock& lock, std::chrono::milliseconds timeout)
{
    connect();
    if (!wait(lock, timeout, [this] { return m_ready || m_context == nullptr; })) {
        m_connectionError = u"it does not answer"_s;
    }
    return context();
}

QString SoundServer::lastError() const
{
    return m_ready ? errorText(m_context) : m_connectionError;
}

void SoundServer::reportAbsence()
{
    if (!std::exchange(m_isAbsenceReported, true)) {
        qCWarning(log).noquote() << u"no sound is heard: no sound server (%1)"_s.arg(m_connectionError);
    }
}

void SoundServer::whenConnected(std::function<void(pa_context*)> handler)
{
    if (m_ready) {
        handler(m_context);
    }
    m_connectedHandlers.push_back(std::move(handler));
}

void SoundServer::whenLost(std::function<void()> handler)
{
    m_lostHandlers.push_back(std::move(handler));
}

void SoundServer::contextChanged(pa_context* context, void* server)
{
    auto* self = static_cast<SoundServer*>(server);
    if (pa_context_get_state(context) == PA_CONTEXT_READY) {
        self->contextIsReady();
    } else if (!PA_CONTEXT_IS_GOOD(pa_context_get_state(context))) {
        self->dropContext(errorText(context));
    }
}

void SoundServer::contextIsReady()
{
    m_ready = true;
    m_connectionError.clear();
    m_isAbsenceReported = false;
    if (m_return) {
        m_return->end();
    }
    qCDebug(log) << "connected to the sound server";
    for (const auto& handler : m_connectedHandlers) {
        handler(m_context);
    }
    notifyWaiting();
}

void SoundServer::dropContext(const QString& reason)
{
    pa_context* context = std::exchange(m_context, nullptr);
    if (context == nullptr) {
        return;
    }
    m_ready = false;
    m_connectionError = reason;
    qCDebug(log).noquote() << "no connection to the sound server:" << reason;
    pa_context_set_state_callback(context, nullptr, nullptr);
    // Closes the socket and fails what is under way, without asking the server.
    pa_context_disconnect(context);
    for (const auto& handler : m_lostHandlers) {
        handler();
    }
    if (m_return) {
        m_return->wait();
    }
    pa_context_unref(context);
    notifyWaiting();
}
