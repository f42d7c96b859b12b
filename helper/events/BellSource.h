// SPDX-License-Identifier: MIT
#pragma once

#include "EventSource.h"

#include <platform/keyboard/ServerBell.h>

#include <memory>

/// The bell that programs ring to alert their user.
///
/// Listens to the X server.
class BellSource final : public EventSource
{
    Q_OBJECT

public:
    using EventSource::EventSource;

    void start() override;

private:
    /// Null without an X server.
    std::unique_ptr<ServerBell> m_bell;
};
