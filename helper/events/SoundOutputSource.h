// SPDX-License-Identifier: MIT
#pragma once

#include "EventSource.h"

#include <platform/sound/SoundServerNews.h>

/// The volume, head phones, and what programs let their user hear by a sound of the desktop's sound theme: errors,
/// questions, messages and mail that have been sent, chosen menu items.
///
/// Listens to the sound server. Of the theme's sounds only those count whose events nothing else tells.
class SoundOutputSource final : public EventSource
{
    Q_OBJECT

public:
    explicit SoundOutputSource(QObject* parent);

    void start() override;

private:
    void takeEventSound(const QString& name);

    SoundServerNews m_server;
};
