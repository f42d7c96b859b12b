#pragma once

#include "KeyboardLayout.h"

#include <QObject>

#include <memory>

struct xcb_connection_t;
struct xkb_context;

/// Knows the keyboard layout of the session and notices its changes: through a connection of its own to the X server
/// where there is one (so it does not matter which platform plug-in Qt runs on), otherwise from the environment, once.
class SessionKeyboard final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SessionKeyboard)

public:
    explicit SessionKeyboard(QObject* parent);
    ~SessionKeyboard() override;

    /// The layout now; a new object after each change. Null when there is none.
    KeyboardLayout::Pointer layout();

private:
    struct Release
    {
        void operator()(xcb_connection_t* connection) const;
        void operator()(xkb_context* context) const;
    };

    void connectToServer();
    void selectEvents();
    void readEvents();
    KeyboardLayout::Pointer layoutOfServer() const;
    KeyboardLayout::Pointer layoutByName() const;

    std::unique_ptr<xkb_context, Release> m_context;
    /// Null without an X server that has the keyboard extension.
    std::unique_ptr<xcb_connection_t, Release> m_connection;
    qint32 m_device = -1;
    quint8 m_firstEvent = 0;
    KeyboardLayout::Pointer m_layout;
    /// Whether m_layout still is what the session uses.
    bool m_known = false;
};
