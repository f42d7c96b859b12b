// SPDX-License-Identifier: MIT
#include "DesktopDisplay.h"
#include "Helper.h"
#include "HelperContract.h"

#include <platform/desktop/Bundle.h>
#include <platform/desktop/TerminationSignals.h>

#include <QApplication>
#include <QLoggingCategory>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.helper")

} // namespace

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
    HelperContract contract;
    std::unique_ptr<Helper> helper;
    const auto end = [](const char* reason) {
        return [reason] {
            qCWarning(log).noquote() << reason;
            QCoreApplication::quit();
        };
    };
    QObject::connect(&contract, &HelperContract::refused, application.get(),
        end("not started: another helper runs in this session, or there is no session bus"));
    QObject::connect(
        &contract, &HelperContract::lost, application.get(), end("the session bus is gone: this is the end"));
    QObject::connect(&contract, &HelperContract::begun, application.get(), [&] {
        helper = std::make_unique<Helper>(contract);
        helper->begin();
    });
    contract.begin();
    return QCoreApplication::exec();
}
