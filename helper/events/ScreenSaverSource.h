// SPDX-License-Identifier: MIT
#pragma once

#include "EventSource.h"

/// The screen saver, and the display that goes to sleep: by itself, or with the machine.
///
/// Listens to the session's screen saver (public source: org.freedesktop.ScreenSaver, org.gnome.ScreenSaver), to the
/// display's configuration where the compositor tells it (org.gnome.Mutter.DisplayConfig, PowerSaveMode), and to the
/// login manager.
class ScreenSaverSource final : public EventSource
{
    Q_OBJECT

public:
    using EventSource::EventSource;

    void start() override;

private:
    void followScreenSaver(const char* interface);
    void followCompositor();
    void followSleep();
    void setActive(bool isActive);
    void setAsleep(bool isAsleep);

    bool m_isActive = false;
    bool m_isAsleep = false;
};
