// SPDX-License-Identifier: MIT
#pragma once

#include "KeyboardLayout.h"
#include "ServerKeyboard.h"
#include "WaylandKeyboard.h"
#include "XcbHandles.h"

#include <QObject>

#include <memory>
#include <optional>

/// Knows the keyboard layout of the session and notices its changes: through a connection of its own (so it does not
/// matter which platform plug-in Qt runs on) to the X server where there is one, else to the Wayland compositor;
/// without either from the environment, once. Why so: docs/decisions/keyboard-layout.md.
class SessionKeyboard final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SessionKeyboard)

public:
    explicit SessionKeyboard(QObject* parent);
    ~SessionKeyboard() override = default;

    /// The layout now; a new object after each change. Null when there is none.
    KeyboardLayout::Pointer layout();

private:
    void connectToServer();
    void readEvents();
    KeyboardLayout::Pointer readLayout() const;
    KeyboardLayout::Pointer layoutOfServer() const;

    /// Null without an X server that has the keyboard extension.
    Xcb::Connection m_connection;
    /// Null with an X server, and outside a Wayland session.
    std::unique_ptr<WaylandKeyboard> m_compositor;
    std::optional<ServerKeyboard> m_serverKeyboard;
    KeyboardLayout::Pointer m_layout;
    /// Whether m_layout still is what the session uses.
    bool m_known = false;
};
