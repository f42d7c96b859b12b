// SPDX-License-Identifier: MIT
#pragma once

#include "InputWatcher.h"

#include <QObject>
#include <QSocketNotifier>

#include <linux/input.h>

#include <array>
#include <bitset>
#include <cstddef>

/// The events of one input device of the kernel (evdev), as they come in. Keys are named by the kernel's codes, which
/// also number the buttons of pointers.
class DeviceStream final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(DeviceStream)

public:
    enum class KeyChange {
        Press,
        Repeat,
        Release,
        /// Went down unseen: it is held, but was not typed just now.
        FoundHeld,
    };
    using Keys = std::bitset<KEY_CNT>;

    /// Takes the open file @p descriptor, which must not block, and closes it in the end. Another file than a device,
    /// such as a pipe, does as well if it holds the kernel's event records.
    DeviceStream(int descriptor, QObject* parent);
    ~DeviceStream() override;

    /// Tells which keys are held already. For the time when the signals are connected.
    void findHeldKeys();

    /// The keys that are down.
    const Keys& heldKeys() const { return m_held; }

    /// Whether moved() is told. At first it is not, and the kernel keeps motion to itself.
    void watchMotion(bool isWatched);

    /// Whether the light with this number (LED_CAPSL and so on) is lit.
    bool isLit(int light) const;

Q_SIGNALS:
    void keyChanged(quint16 code, DeviceStream::KeyChange change, InputTime time);
    void wheelTurned(const WheelTurn& turn);
    /// A pointer reports that it moves along one of its axes.
    void moved();
    /// The kernel has thrown events away, since they were not read in time.
    void eventsLost();
    /// The device is gone, or the stream has ended. All keys have been released before.
    void ended();

private:
    void read();
    void takeBytes(size_t count);
    void takeEvent(const input_event& event);
    void takeKey(quint16 code, qint32 value, InputTime time);
    void holdExactly(const Keys& keys);
    Keys keysOfDevice() const;

    int m_descriptor;
    QSocketNotifier m_notifier;
    /// Bytes that have been read, but not yet taken: less than a record between two reads.
    std::array<std::byte, 64 * sizeof(input_event)> m_bytes{};
    size_t m_filled = 0;
    /// Up to the next report everything is to be passed over.
    bool m_isLossy = false;
    bool m_watchesMotion = false;
    Keys m_held;
};
