// SPDX-License-Identifier: MIT
#include "EventSources.h"

#include "ApplicationSource.h"
#include "BellSource.h"
#include "ClockSource.h"
#include "DeviceSource.h"
#include "DiskSource.h"
#include "DownloadSource.h"
#include "FileTracesSource.h"
#include "FilesSource.h"
#include "KeySource.h"
#include "NetworkSource.h"
#include "NotificationSource.h"
#include "PointerSource.h"
#include "PowerSource.h"
#include "PrintSource.h"
#include "ScreenSaverSource.h"
#include "SessionSource.h"
#include "SoundOutputSource.h"
#include "TrashSource.h"
#include "WindowSource.h"

EventSources::EventSources(InputWatcher* input, WindowWatcher* windows, QObject* parent)
    : QObject(parent)
{
    if (input != nullptr) {
        add(new KeySource(*input, this));
        add(new PointerSource(*input, this));
    }
    if (windows != nullptr) {
        add(new ApplicationSource(*windows, this));
        add(new WindowSource(*windows, this));
    }
    add(new BellSource(this));
    add(new ClockSource(this));
    add(new DeviceSource(this));
    add(new DiskSource(this));
    add(new DownloadSource(this));
    add(new FileTracesSource(this));
    add(new FilesSource(this));
    add(new NetworkSource(this));
    add(new NotificationSource(this));
    add(new PowerSource(this));
    add(new PrintSource(this));
    add(new ScreenSaverSource(this));
    add(new SessionSource(this));
    add(new SoundOutputSource(this));
    add(new TrashSource(this));
}

void EventSources::start()
{
    for (EventSource* const source : m_sources) {
        source->start();
    }
}

void EventSources::add(EventSource* source)
{
    connect(source, &EventSource::happened, this, &EventSources::happened);
    m_sources.push_back(source);
}
