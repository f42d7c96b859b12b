// SPDX-License-Identifier: MIT
#pragma once

#include "EventSource.h"

#include <platform/bus/BusProperties.h>

/// The network: connected to any, and to none any more.
///
/// Listens to the state of NetworkManager (public source: its D-Bus interface, NMState).
class NetworkSource final : public EventSource
{
    Q_OBJECT

public:
    explicit NetworkSource(QObject* parent);

    void start() override;

private:
    void takeState(qint64 state);

    BusProperties m_manager;
    bool m_isConnected = false;
};
