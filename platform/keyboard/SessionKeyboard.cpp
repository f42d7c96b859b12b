// SPDX-License-Identifier: MIT
#include "SessionKeyboard.h"

#include "XkbHandles.h"

#include <product/Product.h>

#include <QLoggingCategory>

#include <xkbcommon/xkbcommon.h>

namespace {

Q_LOGGING_CATEGORY(log, PRODUCT_NAME ".keyboard")

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
    Xcb::Connection connection = Xcb::connectToServer();
    if (connection) {
        m_serverKeyboard = ServerKeyboard::of(connection.get(), ServerKeyboard::Follow::Group);
    }
    if (!m_serverKeyboard) {
        qCWarning(log).noquote() << "The X server's keyboard layout cannot be read; another stands for it";
        return;
    }
    m_connection = std::move(connection);
    Xcb::whenReadable(m_connection, this, [this] { readEvents(); });
}

void SessionKeyboard::readEvents()
{
    while (const auto event = Xcb::Reply<xcb_generic_event_t>(xcb_poll_for_event(m_connection.get()))) {
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
