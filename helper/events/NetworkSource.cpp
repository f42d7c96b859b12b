// SPDX-License-Identifier: MIT
#include "NetworkSource.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 disconnected = 20;
/// To a network at least; what is beyond it is another matter.
constexpr qint64 connectedLocally = 50;

} // namespace

NetworkSource::NetworkSource(QObject* parent)
    : EventSource(parent)
    , m_manager(MessageBus::system(),
          {"org.freedesktop.NetworkManager", "/org/freedesktop/NetworkManager", "org.freedesktop.NetworkManager",
              {u"State"_s}},
          this)
{
}

void NetworkSource::start()
{
    connect(&m_manager, &BusProperties::known, this,
        [this] { m_isConnected = m_manager.value(u"State").integerValue() >= connectedLocally; });
    connect(&m_manager, &BusProperties::changed, this,
        [this](const QString&, const PropertyList::Value&, const PropertyList::Value& now) {
            takeState(now.integerValue());
        });
    m_manager.follow();
}

/// The states in between, connecting and disconnecting, leave it as it was.
void NetworkSource::takeState(qint64 state)
{
    if (state >= connectedLocally && !m_isConnected) {
        m_isConnected = true;
        tell(EventCode::NetworkConnected);
    } else if (state <= disconnected && m_isConnected) {
        m_isConnected = false;
        tell(EventCode::NetworkDisconnected);
    }
}
