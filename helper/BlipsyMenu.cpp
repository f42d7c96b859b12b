// SPDX-License-Identifier: MIT
#include "DesktopDisplay.h"
#include "Helper.h"
#include "TerminationSignals.h"

#include <platform/desktop/Bundle.h>

#include <QApplication>

using namespace Qt::StringLiterals;

/// The helper: plays the sounds while the user works.
int main(int argc, char** argv)
{
    QCoreApplication::setOrganizationName(u"blipsy"_s);
    QCoreApplication::setApplicationName(u"BlipsyMenu"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(BLIPSY_VERSION));
    QGuiApplication::setDesktopFileName(u"com.blipsy.Settings"_s);
    QGuiApplication::setQuitOnLastWindowClosed(false);

    const std::unique_ptr<QApplication> application = DesktopDisplay::start(argc, argv);
    // Blipsy.prefPane/Contents/BlipsyMenu.app/Contents/MacOS is where the program stands.
    Bundle::registerBundle(QCoreApplication::applicationDirPath() + u"/../../../.."_s);

    const TerminationSignals termination;
    QObject::connect(
        &termination, &TerminationSignals::received, application.get(), &QCoreApplication::quit, Qt::QueuedConnection);
    Helper helper;
    helper.start();
    return QCoreApplication::exec();
}
