// SPDX-License-Identifier: MIT
#pragma once

#include "PTHotKey.h"
#include "PTHotKeyEvents.h"

#include <platform/keyboard/HotKeyGrabs.h>

#include <QList>
#include <QObject>
#include <QString>

#include <map>

/// The registry of hot keys: reserves their combinations with the system, and turns the system's hot-key events back
/// into calls of the bound actions. Main thread only.
///
/// The registry installs no handler for those events: a registered hot key is reserved, and fires only in a program
/// that connects systemEvent() to hotKeyEventHandler(). What cannot happen through the operations below as documented
/// throws InternalInconsistency.
class PTHotKeyCenter final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PTHotKeyCenter)

public:
    /// The version of the application framework that the keyboard-event path came after.
    static constexpr double lastFrameworkVersionWithoutCarbonEvents = 620;
    static constexpr double currentFrameworkVersion = 824;

    explicit PTHotKeyCenter(QObject* parent = nullptr, double frameworkVersion = currentFrameworkVersion);
    ~PTHotKeyCenter() override;

    /// The registry that everybody uses; made on first use, lives as long as the application.
    static PTHotKeyCenter& sharedCenter();

    /// Reserves the hot key's combination, after giving back what it had reserved before. False when the system
    /// refuses; the hot key is unregistered then. One whose combination is not valid ends up unregistered, which is no
    /// failure.
    [[nodiscard]] bool registerHotKey(const PTHotKey::Pointer& hotKey);
    /// Nothing happens for a hot key that is not registered.
    void unregisterHotKey(const PTHotKey::Pointer& hotKey);
    /// All registered hot keys, in no defined order.
    QList<PTHotKey::Pointer> allHotKeys() const;
    /// A registered hot key with this identifier; null when there is none, and without an identifier.
    PTHotKey::Pointer hotKeyWithIdentifier(const std::optional<QString>& identifier) const;

    /// The application-level event path; for frameworks that have the keyboard-event path it does nothing.
    void sendEvent(const ApplicationEvent& event);
    /// The keyboard-event path. 0, or the error of reading the event's hot key.
    int sendCarbonEvent(const CarbonEvent& event);

    bool _hasCarbonEventSupport() const;
    /// Null when the reference is not registered.
    PTHotKey::Pointer _hotKeyForCarbonHotKey(HotKeyReference reference) const;
    HotKeyReference _carbonHotKeyForHotKey(const PTHotKey::Pointer& hotKey) const;

    /// Called after each change of the registry; there is no handler to install or to remove.
    void _updateEventHandler() {}

    /// Performs the hot key's action; nothing for null.
    void _hotKeyDown(const PTHotKey::Pointer& hotKey);

    /// A release does nothing.
    void _hotKeyUp(const PTHotKey::Pointer& /*hotKey*/) {}

Q_SIGNALS:
    /// A registered hot key has been pressed.
    void systemEvent(const CarbonEvent& event);
    /// The keyboard has been mapped anew: hot keys have to be registered again to count under its modifiers. Comes
    /// several times for one change.
    void keyboardChanged();

private:
    HotKeyGrabs m_grabs;
    std::map<HotKeyReference, PTHotKey::Pointer> mHotKeys;
    double m_frameworkVersion;
};

/// Hands an event to the shared registry, for a system that calls back a plain function. The status of
/// sendCarbonEvent().
int hotKeyEventHandler(void* handlerCallReference, const CarbonEvent& event, void* userData);
