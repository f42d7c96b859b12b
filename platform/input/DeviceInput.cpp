// SPDX-License-Identifier: MIT
#include "DeviceInput.h"

#include <QSocketNotifier>

#include <fcntl.h>
#include <libudev.h>

#include <algorithm>
#include <array>
#include <utility>

namespace {

using Device = std::unique_ptr<udev_device, decltype(&udev_device_unref)>;

/// XKB counts keys from the kernel's codes plus this.
constexpr quint32 keycodeOffset = 8;

bool hasProperty(udev_device* device, const char* name)
{
    return qstrcmp(udev_device_get_property_value(device, name), "1") == 0;
}

bool isButton(quint16 code)
{
    return code >= BTN_MOUSE && code < BTN_JOYSTICK;
}

/// Touches and tools of pads and tablets, and the buttons of game pads, are no typing.
bool isKey(quint16 code)
{
    return code < BTN_MISC || code >= KEY_OK;
}

} // namespace

void DeviceInput::Unref::operator()(udev* context) const
{
    udev_unref(context);
}

void DeviceInput::Unref::operator()(udev_monitor* monitor) const
{
    udev_monitor_unref(monitor);
}

DeviceInput::~DeviceInput() = default;

bool DeviceInput::followDevices()
{
    m_context.reset(udev_new());
    // The daemon's word comes when it has set the permissions of a new device.
    m_monitor.reset(m_context ? udev_monitor_new_from_netlink(m_context.get(), "udev") : nullptr);
    if (!m_monitor) {
        return false;
    }
    udev_monitor_filter_add_match_subsystem_devtype(m_monitor.get(), "input", nullptr);
    if (udev_monitor_enable_receiving(m_monitor.get()) >= 0) {
        auto* const notifier = new QSocketNotifier(udev_monitor_get_fd(m_monitor.get()), QSocketNotifier::Read, this);
        connect(notifier, &QSocketNotifier::activated, this, [this] {
            const Device device(udev_monitor_receive_device(m_monitor.get()), &udev_device_unref);
            if (device && qstrcmp(udev_device_get_action(device.get()), "remove") != 0) {
                openDevice(device.get());
            }
        });
    }
    return openDevices(m_context.get());
}

bool DeviceInput::openDevices(udev* context)
{
    const std::unique_ptr<udev_enumerate, decltype(&udev_enumerate_unref)> devices(
        udev_enumerate_new(context), &udev_enumerate_unref);
    bool hasKeyboard = false;
    if (devices && udev_enumerate_add_match_subsystem(devices.get(), "input") >= 0 &&
        udev_enumerate_scan_devices(devices.get()) >= 0) {
        udev_list_entry* entry = udev_enumerate_get_list_entry(devices.get());
        for (; entry; entry = udev_list_entry_get_next(entry)) {
            const Device device(
                udev_device_new_from_syspath(context, udev_list_entry_get_name(entry)), &udev_device_unref);
            hasKeyboard = (device && openDevice(device.get())) || hasKeyboard;
        }
    }
    return hasKeyboard;
}

/// Whether it is a keyboard, and could be opened.
bool DeviceInput::openDevice(udev_device* device)
{
    const QString node = QString::fromLocal8Bit(udev_device_get_devnode(device));
    const bool isKeyboard = hasProperty(device, "ID_INPUT_KEYBOARD");
    constexpr std::array pointers{"ID_INPUT_MOUSE", "ID_INPUT_TOUCHPAD", "ID_INPUT_POINTINGSTICK"};
    const bool isPointer = std::ranges::any_of(pointers, [&](const char* name) { return hasProperty(device, name); });
    // Each device has older nodes of other forms beside this one.
    if (!m_isInFront || !node.startsWith(QLatin1String("/dev/input/event")) || !(isKeyboard || isPointer) ||
        m_devices.contains(node)) {
        return false;
    }
    const int descriptor = open(node.toLocal8Bit().constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        return false;
    }
    addDevice(node, descriptor);
    return isKeyboard;
}

void DeviceInput::addDevice(const QString& name, int descriptor)
{
    auto* const device = new DeviceStream(descriptor, this);
    m_devices.insert(name, device);
    connect(device, &DeviceStream::keyChanged, this,
        [this, device](quint16 code, DeviceStream::KeyChange change, InputTime time) {
            if (isButton(code)) {
                takeButton(*device, code, change, time);
            } else {
                takeKey(code, change, time);
            }
        });
    connect(device, &DeviceStream::moved, this, [this, device] { takeMotion(*device); });
    connect(device, &DeviceStream::wheelTurned, this, &DeviceInput::wheelTurned);
    connect(device, &DeviceStream::eventsLost, this, &DeviceInput::interrupted);
    connect(device, &DeviceStream::ended, this, [this, name, device] {
        m_devices.remove(name);
        device->deleteLater();
    });
    device->findHeldKeys();
}

void DeviceInput::takeKey(quint16 code, DeviceStream::KeyChange change, InputTime time)
{
    using Change = DeviceStream::KeyChange;
    const bool isPress = change == Change::Press || change == Change::Repeat;
    takeLayout();
    if (!m_interpreter || !isKey(code)) {
        return;
    }
    const quint32 keycode = code + keycodeOffset;
    if (isPress) {
        Q_EMIT keyPressed({m_interpreter->press(keycode), time, change == Change::Repeat});
    }
    if (change != Change::Repeat) {
        m_interpreter->follow(keycode, change != Change::Release);
        followCapsLock(m_interpreter->isCapsLocked());
    }
}

void DeviceInput::takeButton(DeviceStream& device, quint16 code, DeviceStream::KeyChange change, InputTime time)
{
    using Button = ButtonPress::Button;
    const bool isPress = change == DeviceStream::KeyChange::Press;
    if (code == BTN_LEFT) {
        isPress ? m_drag.press() : m_drag.release();
        device.watchMotion(m_drag.isWatching());
    }
    if (!isPress) {
        return;
    }
    const Button button = code == BTN_LEFT     ? Button::Left
                          : code == BTN_RIGHT  ? Button::Right
                          : code == BTN_MIDDLE ? Button::Middle
                                               : Button::Other;
    Q_EMIT buttonPressed({button, time});
}

void DeviceInput::takeMotion(DeviceStream& device)
{
    if (m_drag.move()) {
        Q_EMIT pointerDragged();
    }
    if (!m_drag.isWatching()) {
        device.watchMotion(false);
    }
}

void DeviceInput::setInFront(bool isInFront)
{
    if (isInFront == m_isInFront) {
        return;
    }
    m_isInFront = isInFront;
    if (!isInFront) {
        qDeleteAll(std::exchange(m_devices, {}));
    } else if (m_context) {
        openDevices(m_context.get());
    }
    // Keys and locks are looked up anew.
    m_layout.reset();
    m_interpreter.reset();
    m_drag = {};
    Q_EMIT interrupted();
}

void DeviceInput::forget()
{
    // The streams keep nothing.
    if (m_interpreter) {
        m_interpreter->abandonComposition();
    }
}

/// Begins anew with the session's layout when it has changed, with the keys that are held and the locks that are lit.
void DeviceInput::takeLayout()
{
    const KeyboardLayout::Pointer layout = KeyboardLayout::current();
    if (layout == m_layout) {
        return;
    }
    m_layout = layout;
    m_interpreter.reset();
    if (!layout) {
        return;
    }
    m_interpreter.emplace(layout->newState());
    for (const DeviceStream* device : std::as_const(m_devices)) {
        for (quint32 code = 0; code < KEY_CNT; ++code) {
            if (device->heldKeys().test(code) && isKey(quint16(code))) {
                m_interpreter->follow(code + keycodeOffset, true);
            }
        }
    }
    lock(LED_CAPSL, KEY_CAPSLOCK);
    lock(LED_NUML, KEY_NUMLOCK);
    followCapsLock(m_interpreter->isCapsLocked());
}

/// Sets the lock whose light is lit on one of the devices.
void DeviceInput::lock(int light, quint16 code)
{
    if (std::ranges::any_of(m_devices, [light](const DeviceStream* device) { return device->isLit(light); })) {
        m_interpreter->follow(code + keycodeOffset, true);
        m_interpreter->follow(code + keycodeOffset, false);
    }
}
