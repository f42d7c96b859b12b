// SPDX-License-Identifier: MIT
#include "Toolkit.h"

#include <QApplication>
#include <QTextStream>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

QtMessageHandler previousHandler = nullptr;

QString displayNamed(const char* variable)
{
    const QString name = qEnvironmentVariable(variable);
    return QString::fromLatin1(variable) + (name.isEmpty() ? u" is not set"_s : u" is \"%1\""_s.arg(name));
}

/// What the toolkit's platform part says while it looks for a display is said again, shorter, when there is none.
void handleWhileStarting(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtFatalMsg) {
        QTextStream(stderr) << "blipsy-settings: no display can be reached: " << displayNamed("DISPLAY") << ", "
                            << displayNamed("WAYLAND_DISPLAY") << Qt::endl;
        std::_Exit(EXIT_FAILURE);
    }
    if (qstrncmp(context.category, "qt.qpa.", 7) != 0) {
        previousHandler(type, context, message);
    }
}

} // namespace

std::unique_ptr<QApplication> Toolkit::start(int& argc, char** argv)
{
    previousHandler = qInstallMessageHandler(handleWhileStarting);
    auto application = std::make_unique<QApplication>(argc, argv);
    qInstallMessageHandler(previousHandler);
    return application;
}
