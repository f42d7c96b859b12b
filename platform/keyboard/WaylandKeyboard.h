// SPDX-License-Identifier: MIT
#pragma once

#include "KeyboardLayout.h"

#include <QObject>

#include <chrono>
#include <memory>

class QDeadlineTimer;

struct wl_display;
struct wl_keyboard;
struct wl_registry;
struct wl_seat;

/// The keyboard layout that the Wayland compositor tells its clients, through a connection of its own to the compositor
/// that WAYLAND_DISPLAY names. Main thread only; changes are noticed when the event loop runs.
///
/// A compositor tells which of several layouts is in use only to the client that has the focus. A connection without
/// windows never has it, so the first layout counts.
class WaylandKeyboard final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(WaylandKeyboard)

public:
    /// Returns when the compositor has told its layout, which takes some 10 ms; one that is silent is waited for half a
    /// second at most, and what it says later counts.
    explicit WaylandKeyboard(QObject* parent = nullptr);
    ~WaylandKeyboard() override = default;

    /// The same object until layoutChanged(). Null while the compositor has told none: it cannot be reached, or has no
    /// keyboard.
    const KeyboardLayout::Pointer& layout() const { return m_layout; }

Q_SIGNALS:
    void layoutChanged();

private:
    /// What the compositor's events call.
    struct Listeners;

    struct Release
    {
        void operator()(wl_display* display) const;
        void operator()(wl_registry* registry) const;
        void operator()(wl_seat* seat) const;
        void operator()(wl_keyboard* keyboard) const;
    };

    void connectToCompositor();
    bool roundTrip(const QDeadlineTimer& deadline);
    bool readEvents(std::chrono::milliseconds patience);
    void takeKeymap(quint32 format, int file, quint32 size);

    /// Null when the compositor cannot be reached.
    std::unique_ptr<wl_display, Release> m_display;
    std::unique_ptr<wl_registry, Release> m_registry;
    /// Of several the first.
    std::unique_ptr<wl_seat, Release> m_seat;
    std::unique_ptr<wl_keyboard, Release> m_keyboard;
    KeyboardLayout::Pointer m_layout;
};
