// SPDX-License-Identifier: MIT
#pragma once

#include "SoundEventsController.h"

#include <QWidget>

class SoundPanelAccessory;

/// The tab "Events": the form, and its controller with every outlet and action connected.
class EventsTab final : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(EventsTab)

public:
    /// @p soundPanel belongs to the caller and outlives the tab.
    explicit EventsTab(SoundPanelAccessory& soundPanel, QWidget* parent = nullptr);

    /// Its set-up is still to be run.
    SoundEventsController& controller() { return m_controller; }

private:
    SoundEventsController m_controller;
};
