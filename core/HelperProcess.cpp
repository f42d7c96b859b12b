// SPDX-License-Identifier: MIT
#include "HelperProcess.h"

#include "SharedNames.h"

#include <platform/bus/ServiceRegistry.h>
#include <platform/desktop/Bundle.h>
#include <platform/desktop/ProcessLauncher.h>

using namespace Qt::StringLiterals;

QString HelperProcess::bundlePath()
{
    return Bundle::path() + u"/Contents/BlipsyMenu.app"_s;
}

void HelperProcess::isRunning(QObject* context, const std::function<void(bool)>& answered)
{
    ServiceRegistry::isRegistered(helperIdentifier, context, answered);
}

bool HelperProcess::start()
{
    return ProcessLauncher::launch(bundlePath() + u"/Contents/MacOS/BlipsyMenu"_s);
}

void HelperProcess::stop()
{
    ProcessLauncher::launch(u"/usr/bin/killall"_s, {u"BlipsyMenu"_s});
}
