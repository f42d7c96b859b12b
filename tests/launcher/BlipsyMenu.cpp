// SPDX-License-Identifier: MIT
#include <platform/bus/DistributedNotificationCenter.h>
#include <platform/storage/Preferences.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDir>
#include <QFile>
#include <QSocketNotifier>

#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>

using namespace Qt::StringLiterals;

/// A helper that makes no sound: it notes its start in the home folder, registers the service, records its build
/// number, and takes its leave when it is told to end, unless BLIPSY_STUBBORN is set.
int main(int argc, char* argv[])
{
    sigset_t termination;
    sigemptyset(&termination);
    sigaddset(&termination, SIGTERM);
    sigprocmask(SIG_BLOCK, &termination, nullptr);

    const QCoreApplication application(argc, argv);
    const QString identifier = u"com.blipsy.BlipsyMenu"_s;
    QFile starts(QDir::homePath() + u"/helper-starts"_s);
    if (!starts.open(QIODevice::Append) || starts.write(QByteArray::number(argc) + '\n') < 0) {
        return 1;
    }
    starts.close();
    Preferences::setValue(u"MenuBuild"_s, u"10012"_s, identifier);
    Preferences::synchronize(identifier);
    if (!QDBusConnection::sessionBus().registerService(identifier)) {
        return 1;
    }

    const QSocketNotifier told(::signalfd(-1, &termination, SFD_CLOEXEC), QSocketNotifier::Read);
    if (!qEnvironmentVariableIsSet("BLIPSY_STUBBORN")) {
        QObject::connect(&told, &QSocketNotifier::activated, &application, [&] {
            DistributedNotificationCenter::defaultCenter().postNotification(u"ByeBye"_s, identifier);
            QCoreApplication::quit();
        });
    }
    return QCoreApplication::exec();
}
