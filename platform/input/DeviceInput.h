// SPDX-License-Identifier: MIT
#pragma once

#include "DeviceStream.h"
#include "DragDetector.h"
#include "InputWatcher.h"

#include <platform/keyboard/KeyboardLayout.h>

#include <QHash>

#include <memory>
#include <optional>

struct udev;
struct udev_device;
struct udev_monitor;

/// What is typed and clicked on the kernel's input devices that the user may read, with the layout of the session.
///
/// The locks and modifiers are followed from the keys of all keyboards together, as a compositor does it. The
/// repetition of a held key is the kernel's; programs under a compositor repeat at a pace of their own.
///
/// Devices belong to the seat, and so to whatever session is in front: while that is another user's, setInFront() has
/// all of them closed.
class DeviceInput final : public InputWatcher
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(DeviceInput)

public:
    using InputWatcher::InputWatcher;
    ~DeviceInput() override;

    /// Opens the keyboards and pointers that there are and, from now on, those that are plugged in. Whether a keyboard
    /// could be opened.
    bool followDevices();

    /// Takes the events of the open file @p descriptor (see DeviceStream) until it ends. A device is followed once;
    /// @p name tells it from others.
    void addDevice(const QString& name, int descriptor);

    void setInFront(bool isInFront) override;
    void forget() override;

private:
    struct Unref
    {
        void operator()(udev* context) const;
        void operator()(udev_monitor* monitor) const;
    };

    bool openDevices(udev* context);
    bool openDevice(udev_device* device);
    void takeKey(quint16 code, DeviceStream::KeyChange change, InputTime time);
    void takeButton(DeviceStream& device, quint16 code, DeviceStream::KeyChange change, InputTime time);
    void takeMotion(DeviceStream& device);
    void takeLayout();
    void lock(int light, quint16 code);

    std::unique_ptr<udev, Unref> m_context;
    std::unique_ptr<udev_monitor, Unref> m_monitor;
    QHash<QString, DeviceStream*> m_devices;
    KeyboardLayout::Pointer m_layout;
    /// Nothing while the session has no layout.
    std::optional<KeyInterpreter> m_interpreter;
    DragDetector m_drag;
    bool m_isInFront = true;
};
