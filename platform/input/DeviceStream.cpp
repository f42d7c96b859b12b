// SPDX-License-Identifier: MIT
#include "DeviceStream.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <ctime>

namespace {

template <size_t bits>
using Bitmap = std::array<unsigned char, (bits + 7) / 8>;

template <size_t size>
void setBit(std::array<unsigned char, size>& bitmap, size_t bit)
{
    bitmap[bit / 8] = static_cast<unsigned char>(unsigned(bitmap[bit / 8]) | (1U << (bit % 8)));
}

template <size_t size>
bool hasBit(const std::array<unsigned char, size>& bitmap, size_t bit)
{
    return (unsigned(bitmap[bit / 8]) >> (bit % 8) & 1U) != 0;
}

template <size_t size>
void showOnly(int descriptor, quint32 type, const std::array<unsigned char, size>& codes)
{
    const input_mask mask{type, quint32(codes.size()), quint64(reinterpret_cast<quintptr>(codes.data()))};
    ioctl(descriptor, EVIOCSMASK, &mask);
}

/// Asks for nothing but keys, buttons and wheels, so that a pointer that moves does not wake this process; for motion
/// along its axes, too, when it is wanted. What is no device refuses, which does no harm.
void selectEvents(int descriptor, bool withMotion)
{
    Bitmap<EV_CNT> types{};
    Bitmap<REL_CNT> relativeAxes{};
    Bitmap<ABS_CNT> absoluteAxes{};
    setBit(types, EV_KEY);
    setBit(types, EV_REL);
    setBit(relativeAxes, REL_WHEEL);
    setBit(relativeAxes, REL_HWHEEL);
    if (withMotion) {
        setBit(types, EV_ABS);
        setBit(relativeAxes, REL_X);
        setBit(relativeAxes, REL_Y);
        setBit(absoluteAxes, ABS_X);
        setBit(absoluteAxes, ABS_Y);
    }
    showOnly(descriptor, EV_SYN, types);
    showOnly(descriptor, EV_REL, relativeAxes);
    showOnly(descriptor, EV_ABS, absoluteAxes);
}

bool isMotion(const input_event& event)
{
    return (event.type == EV_REL && (event.code == REL_X || event.code == REL_Y)) ||
           (event.type == EV_ABS && (event.code == ABS_X || event.code == ABS_Y));
}

InputTime timeOf(const input_event& event)
{
    return InputTime(quint64(event.input_event_sec) * 1000 + quint64(event.input_event_usec) / 1000);
}

} // namespace

DeviceStream::DeviceStream(int descriptor, QObject* parent)
    : QObject(parent)
    , m_descriptor(descriptor)
    , m_notifier(descriptor, QSocketNotifier::Read)
{
    selectEvents(m_descriptor, false);
    int clock = CLOCK_MONOTONIC;
    ioctl(m_descriptor, EVIOCSCLOCKID, &clock);
    connect(&m_notifier, &QSocketNotifier::activated, this, &DeviceStream::read);
}

DeviceStream::~DeviceStream()
{
    m_notifier.setEnabled(false);
    close(m_descriptor);
}

void DeviceStream::findHeldKeys()
{
    holdExactly(keysOfDevice());
}

void DeviceStream::watchMotion(bool isWatched)
{
    m_watchesMotion = isWatched;
    selectEvents(m_descriptor, isWatched);
}

bool DeviceStream::isLit(int light) const
{
    Bitmap<LED_CNT> lights{};
    return ioctl(m_descriptor, EVIOCGLED(sizeof lights), lights.data()) >= 0 && hasBit(lights, size_t(light));
}

void DeviceStream::read()
{
    const ssize_t count = ::read(m_descriptor, m_bytes.data() + m_filled, m_bytes.size() - m_filled);
    if (count > 0) {
        takeBytes(size_t(count));
    } else if (count == 0 || (errno != EAGAIN && errno != EINTR)) {
        m_notifier.setEnabled(false);
        holdExactly({});
        Q_EMIT ended();
    }
}

void DeviceStream::takeBytes(size_t count)
{
    m_filled += count;
    size_t taken = 0;
    for (; m_filled - taken >= sizeof(input_event); taken += sizeof(input_event)) {
        input_event event{};
        std::memcpy(&event, m_bytes.data() + taken, sizeof event);
        takeEvent(event);
    }
    std::memmove(m_bytes.data(), m_bytes.data() + taken, m_filled - taken);
    m_filled -= taken;
    // What was typed is not left behind.
    explicit_bzero(m_bytes.data() + m_filled, m_bytes.size() - m_filled);
}

void DeviceStream::takeEvent(const input_event& event)
{
    if (event.type == EV_SYN && event.code == SYN_DROPPED) {
        m_isLossy = true;
    } else if (m_isLossy) {
        if (event.type == EV_SYN && event.code == SYN_REPORT) {
            m_isLossy = false;
            holdExactly(keysOfDevice());
            Q_EMIT eventsLost();
        }
    } else if (event.type == EV_KEY) {
        takeKey(event.code, event.value, timeOf(event));
    } else if (isMotion(event)) {
        if (m_watchesMotion) {
            Q_EMIT moved();
        }
    } else if (event.type == EV_REL && event.value != 0) {
        using Direction = WheelTurn::Direction;
        if (event.code == REL_WHEEL) {
            Q_EMIT wheelTurned({event.value > 0 ? Direction::Up : Direction::Down, timeOf(event)});
        } else if (event.code == REL_HWHEEL) {
            Q_EMIT wheelTurned({event.value > 0 ? Direction::Right : Direction::Left, timeOf(event)});
        }
    }
}

void DeviceStream::takeKey(quint16 code, qint32 value, InputTime time)
{
    if (code >= m_held.size() || value < 0 || value > 2) {
        return;
    }
    constexpr std::array changes{KeyChange::Release, KeyChange::Press, KeyChange::Repeat};
    Q_EMIT keyChanged(code, changes[size_t(value)], time);
    m_held.set(code, value != 0);
}

/// Tells where @p keys differ from the keys that were held so far.
void DeviceStream::holdExactly(const Keys& keys)
{
    const Keys changed = m_held ^ keys;
    for (size_t code = 0; code < changed.size(); ++code) {
        if (changed.test(code)) {
            Q_EMIT keyChanged(quint16(code), keys.test(code) ? KeyChange::FoundHeld : KeyChange::Release, 0);
        }
    }
    m_held = keys;
}

/// None for what is no device.
DeviceStream::Keys DeviceStream::keysOfDevice() const
{
    Bitmap<KEY_CNT> bitmap{};
    Keys keys;
    if (ioctl(m_descriptor, EVIOCGKEY(sizeof bitmap), bitmap.data()) >= 0) {
        for (size_t code = 0; code < keys.size(); ++code) {
            keys.set(code, hasBit(bitmap, code));
        }
    }
    return keys;
}
