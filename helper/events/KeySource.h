// SPDX-License-Identifier: MIT
#pragma once

#include "EventSource.h"

class InputWatcher;
struct KeyPress;

/// Keys: each press is one event, the most special that fits. What a held key repeats, and modifiers, are none.
///
/// Listens to the input watcher.
class KeySource final : public EventSource
{
    Q_OBJECT

public:
    /// @p input must live as long.
    KeySource(InputWatcher& input, QObject* parent);

    void start() override;

private:
    void takeKey(const KeyPress& press);

    InputWatcher& m_input;
};
