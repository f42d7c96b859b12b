// SPDX-License-Identifier: MIT
#include "DesktopDisplay.h"

#include <QApplication>
#include <QLoggingCategory>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.helper")

constexpr auto platformVariable = "QT_QPA_PLATFORM";
const QString nowhere = u"offscreen"_s;

QtMessageHandler previousHandler = nullptr;

/// The displays that were tried in vain are told of in one line, when all have been.
void handleWhileStarting(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (qstrncmp(context.category, "qt.qpa.", 7) != 0 || type == QtFatalMsg) {
        previousHandler(type, context, message);
    }
}

/// The platforms of the toolkit in the order in which they are tried.
QByteArray platforms(const QByteArray& wanted)
{
    if (!wanted.isEmpty()) {
        return wanted + ";offscreen";
    }
    return qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ? "xcb;offscreen" : "wayland;xcb;offscreen";
}

} // namespace

std::unique_ptr<QApplication> DesktopDisplay::start(int& argc, char** argv)
{
    const QByteArray wanted = qgetenv(platformVariable);
    qputenv(platformVariable, platforms(wanted));
    previousHandler = qInstallMessageHandler(handleWhileStarting);
    auto application = std::make_unique<QApplication>(argc, argv);
    qInstallMessageHandler(previousHandler);
    // Programs that the helper starts look for their display themselves.
    if (wanted.isNull()) {
        qunsetenv(platformVariable);
    } else {
        qputenv(platformVariable, wanted);
    }
    if (!isThere() && wanted != "offscreen") {
        qCWarning(log, "no display can be reached: going on without icon and clipboard");
    }
    return application;
}

bool DesktopDisplay::isThere()
{
    return QGuiApplication::platformName() != nowhere;
}
