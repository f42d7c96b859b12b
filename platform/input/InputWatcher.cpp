// SPDX-License-Identifier: MIT
#include "InputWatcher.h"

#include "DeviceInput.h"
#include "ServerInput.h"

#include <QLoggingCategory>

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.input")

std::unique_ptr<InputWatcher> readableDevices()
{
    auto devices = std::make_unique<DeviceInput>();
    return devices->followDevices() ? std::move(devices) : nullptr;
}

} // namespace

std::unique_ptr<InputWatcher> InputWatcher::ofSession(Obstacle* obstacle)
{
    std::unique_ptr<InputWatcher> watcher;
    // An X server beside a Wayland compositor hears only what is typed into its own windows.
    if (!qEnvironmentVariableIsSet("WAYLAND_DISPLAY")) {
        watcher = ServerInput::create();
    }
    if (!watcher) {
        watcher = readableDevices();
    }
    if (obstacle) {
        const bool hasDisplay = qEnvironmentVariableIsSet("WAYLAND_DISPLAY") || qEnvironmentVariableIsSet("DISPLAY");
        *obstacle = watcher ? Obstacle::None : hasDisplay ? Obstacle::NoReadableDevice : Obstacle::NoDisplay;
    }
    if (!watcher) {
        qCWarning(log).noquote() << "Typing cannot be watched in this session: it has no X server of its own, and its "
                                    "user may not read the input devices";
    }
    return watcher;
}

void InputWatcher::followCapsLock(bool isOn)
{
    const bool isNews = m_isCapsLocked.has_value() && *m_isCapsLocked != isOn;
    m_isCapsLocked = isOn;
    if (isNews) {
        Q_EMIT capsLockChanged(isOn);
    }
}
