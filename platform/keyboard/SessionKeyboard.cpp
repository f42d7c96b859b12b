// SPDX-License-Identifier: MIT
#include "SessionKeyboard.h"

#include "XkbHandles.h"

#include <QLoggingCategory>
#include <QSocketNotifier>

#include <xkbcommon/xkbcommon.h>

#include <cstdlib>

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.keyboard")

template <typename Type>
struct FreeReply
{
    void operator()(Type* reply) const
    {
        std::free(reply);
    } // NOLINT(*-no-malloc): the library hands out malloc'ed memory
};

template <typename Type>
using Reply = std::unique_ptr<Type, FreeReply<Type>>;

/// The layout that the XKB_DEFAULT_* environment variables or the system's default name.
KeyboardLayout::Pointer layoutByName()
{
    const Xkb::Context context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    const Xkb::Keymap keymap(
        context ? xkb_keymap_new_from_names(context.get(), nullptr, XKB_KEYMAP_COMPILE_NO_FLAGS) : nullptr);
    if (!keymap) {
        qCWarning(log).noquote() << "No keyboard layout could be loaded; keys have no names";
        return {};
    }
    return std::make_shared<const KeyboardLayout>(keymap.get(), 0);
}

} // namespace

void SessionKeyboard::Release::operator()(xcb_connection_t* connection) const
{
    xcb_disconnect(connection);
}

SessionKeyboard::SessionKeyboard(QObject* parent)
    : QObject(parent)
{
    if (qEnvironmentVariableIsSet("DISPLAY")) {
        connectToServer();
    }
    if (!m_connection && qEnvironmentVariableIsSet("WAYLAND_DISPLAY")) {
        m_compositor = std::make_unique<WaylandKeyboard>();
        connect(m_compositor.get(), &WaylandKeyboard::layoutChanged, this, [this] { m_known = false; });
    }
}

SessionKeyboard::~SessionKeyboard() = default;

KeyboardLayout::Pointer SessionKeyboard::layout()
{
    if (m_known) {
        return m_layout;
    }
    m_known = true;
    m_layout = readLayout();
    if (m_connection) {
        // Reading the replies has read the events before them too, of which the notifier will not tell again.
        readEvents();
    }
    return m_layout;
}

void SessionKeyboard::connectToServer()
{
    // A connection that fails is an object all the same, and must be closed like any other.
    std::unique_ptr<xcb_connection_t, Release> connection(xcb_connect(nullptr, nullptr));
    if (xcb_connection_has_error(connection.get()) == 0) {
        m_serverKeyboard = ServerKeyboard::of(connection.get(), ServerKeyboard::Follow::Group);
    }
    if (!m_serverKeyboard) {
        qCWarning(log).noquote() << "The X server's keyboard layout cannot be read; another stands for it";
        return;
    }
    m_connection = std::move(connection);
    auto* const notifier =
        new QSocketNotifier(xcb_get_file_descriptor(m_connection.get()), QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        readEvents();
        notifier->setEnabled(xcb_connection_has_error(m_connection.get()) == 0);
    });
}

void SessionKeyboard::readEvents()
{
    for (;;) {
        const Reply<xcb_generic_event_t> event(xcb_poll_for_event(m_connection.get()));
        if (!event) {
            return;
        }
        if (m_serverKeyboard->news(*event) != ServerKeyboard::News::None) {
            m_known = false;
        }
    }
}

KeyboardLayout::Pointer SessionKeyboard::readLayout() const
{
    if (m_connection) {
        return layoutOfServer();
    }
    const KeyboardLayout::Pointer layout = m_compositor ? m_compositor->layout() : nullptr;
    return layout ? layout : layoutByName();
}

KeyboardLayout::Pointer SessionKeyboard::layoutOfServer() const
{
    const Xkb::State state = m_serverKeyboard->readState();
    if (!state) {
        qCWarning(log).noquote() << "The X server did not tell its keyboard layout";
        return m_layout;
    }
    return std::make_shared<const KeyboardLayout>(
        xkb_state_get_keymap(state.get()), xkb_state_serialize_layout(state.get(), XKB_STATE_LAYOUT_EFFECTIVE));
}
