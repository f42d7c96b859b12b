// SPDX-License-Identifier: MIT
#include "BusProperties.h"

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;
using PropertyList::Value;

namespace {

constexpr auto interface = "org.freedesktop.DBus.Properties";
constexpr auto answerTimeout = 5s;

} // namespace

BusProperties::BusProperties(MessageBus& bus, Source source, QObject* parent)
    : QObject(parent)
    , m_bus(bus)
    , m_source(std::move(source))
{
}

void BusProperties::follow()
{
    m_bus.subscribe({m_source.service, m_source.path, interface, "PropertiesChanged"}, this,
        [this](const MessageBus::Signal& signal) { receive(signal); });
    m_bus.followService(m_source.service, this, [this](const QString& owner) {
        m_values = PropertyList::Dictionary::create();
        if (!owner.isEmpty()) {
            readAll(true);
        }
    });
}

void BusProperties::readAll(bool hasAppeared)
{
    m_bus.request({m_source.service, m_source.path, interface, "GetAll"}, {QString::fromLatin1(m_source.interface)},
        answerTimeout, this, [this, hasAppeared](const MessageBus::Arguments* reply) {
            if (reply != nullptr) {
                take(MessageBus::valueAt(reply, 0));
                if (hasAppeared) {
                    Q_EMIT known();
                }
            }
        });
}

void BusProperties::receive(const MessageBus::Signal& signal)
{
    if (signal.argument(0).string().toLatin1() != m_source.interface) {
        return;
    }
    take(signal.argument(1));
    const PropertyList::ArrayPointer invalidated = signal.argument(2).array();
    if (invalidated && std::ranges::any_of(*invalidated,
                           [this](const Value& name) { return m_source.names.contains(name.stringView()); })) {
        readAll(false);
    }
}

void BusProperties::take(const Value& values)
{
    const PropertyList::DictionaryPointer dictionary = values.dictionary();
    for (qsizetype i = 0; dictionary && i < m_source.names.size(); ++i) {
        const QString& name = m_source.names[i];
        const Value now = dictionary->value(name);
        const Value before = m_values->value(name);
        if (now.isNull() || now == before) {
            continue;
        }
        m_values->insert(name, now);
        if (!before.isNull()) {
            Q_EMIT changed(name, before, now);
        }
    }
}
