// SPDX-License-Identifier: MIT
#include "IdleTime.h"

#include <platform/bus/BusProperties.h>
#include <platform/input/IdleAlarm.h>

#include <QDateTime>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString idleHint = u"IdleHint"_s;

} // namespace

IdleTime::IdleTime(QObject* parent)
    : QObject(parent)
{
    // Beside a Wayland compositor an X server knows of what goes to its own windows only.
    if (!qEnvironmentVariableIsSet("WAYLAND_DISPLAY")) {
        m_alarm = IdleAlarm::ofServer();
    }
    if (m_alarm) {
        connect(m_alarm.get(), &IdleAlarm::rang, this, &IdleTime::reached);
        return;
    }
    m_rest.setSingleShot(true);
    connect(&m_rest, &QTimer::timeout, this, &IdleTime::reached);
    m_hint = std::make_unique<BusProperties>(MessageBus::system(),
        BusProperties::Source{"org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
            {u"IdleSinceHint"_s, idleHint}},
        nullptr);
    connect(m_hint.get(), &BusProperties::changed, this, [this](const QString& name) {
        if (name == idleHint) {
            takeHint();
        }
    });
    m_hint->follow();
}

IdleTime::~IdleTime() = default;

void IdleTime::setLimit(std::chrono::milliseconds time)
{
    m_limit = time;
    if (m_alarm) {
        m_alarm->set(time);
    } else {
        takeHint();
    }
}

void IdleTime::takeHint()
{
    if (m_limit <= 0ms || m_hint->value(idleHint).integerValue() == 0) {
        m_rest.stop();
        return;
    }
    // In microseconds; a clock that was set in between makes the rest wrong, not long.
    const auto since = std::chrono::microseconds(m_hint->value(u"IdleSinceHint").integerValue());
    const auto idle = std::chrono::milliseconds(QDateTime::currentMSecsSinceEpoch()) -
                      std::chrono::duration_cast<std::chrono::milliseconds>(since);
    m_rest.start(std::clamp(m_limit - idle, 0ms, m_limit));
}
