// SPDX-License-Identifier: MIT
#pragma once

#include "EventSource.h"

#include <platform/input/InputEvents.h>

#include <optional>

class InputWatcher;

/// Clicks, drags and the wheel. The second click of two within the toolkit's interval is a double click, and no click.
///
/// Listens to the input watcher.
class PointerSource final : public EventSource
{
    Q_OBJECT

public:
    /// @p input must live as long.
    PointerSource(InputWatcher& input, QObject* parent);

    void start() override;

private:
    void takeButton(const ButtonPress& press);
    void takeWheel(const WheelTurn& turn);

    InputWatcher& m_input;
    /// Of a click that may become a double click.
    std::optional<InputTime> m_lastClick;
};
