// SPDX-License-Identifier: MIT
#include "BYlauncher.h"

#include <core/HelperProcess.h>
#include <core/Settings.h>
#include <platform/controls/Matrix.h>
#include <platform/desktop/Bundle.h>
#include <platform/desktop/LoginItemScript.h>

#include <QLoggingCategory>
#include <QTimer>

#include <tuple>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.launcher")

const QString removalScript = u"tell application \"System Events\"\ndelete login item \"BlipsyMenu\"\nend tell"_s;
const QString creationScript =
    u"set appPath to \"%1/Contents/BlipsyMenu.app\"\ntell application \"System Events\"\nmake login item at end with properties {path:appPath, hidden:false}\nend tell"_s;

/// A start has been asked for since the last off().
bool alreadyClicked = false;

} // namespace

BYlauncher::BYlauncher(QObject* parent)
    : QObject(parent)
{
}

BYlauncher::~BYlauncher() = default;

void BYlauncher::awakeFromNib()
{
    alreadyClicked = false;
    HelperProcess::isRunning(this, [this](bool running) { showRunning(running); });
    if (Settings::menuBuild.value() < HelperProcess::oldestCompatibleBuild) {
        off(nullptr);
        on(nullptr);
    }
}

void BYlauncher::on(QObject* /*sender*/)
{
    if (alreadyClicked) {
        return;
    }
    QTimer::singleShot(HelperProcess::restartDelay, this, &BYlauncher::handleTimer);
    alreadyClicked = true;
}

void BYlauncher::off(QObject* /*sender*/)
{
    alreadyClicked = false;
    HelperProcess::stop();
    // There may be no login item, which is as well.
    std::ignore = LoginItemScript::execute(removalScript);
}

void BYlauncher::handleTimer()
{
    HelperProcess::isRunning(this, [this](bool running) {
        if (!running) {
            start();
        }
    });
}

void BYlauncher::start()
{
    const QString panePath = Bundle::path();
    const auto made = LoginItemScript::execute(creationScript.arg(LoginItemScript::escaped(panePath)));
    if (!made) {
        qCWarning(log).noquote() << made.error();
    }
    if (HelperProcess::start()) {
        showRunning(true);
    }
}

void BYlauncher::showRunning(bool running)
{
    if (onOffRadioButton != nullptr) {
        onOffRadioButton->setState_atRow_column(true, 0, running ? 0 : 1);
    }
}
