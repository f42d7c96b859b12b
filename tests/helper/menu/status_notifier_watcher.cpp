// SPDX-License-Identifier: MIT
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QTextStream>

using namespace Qt::StringLiterals;

/// A desktop's status-notifier host: says on its standard output who has registered an icon.
class Watcher final : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)

public:
    static bool hasHost() { return true; }

public Q_SLOTS:

    Q_SCRIPTABLE void RegisterStatusNotifierItem(const QString& item)
    {
        QTextStream(stdout) << (item.startsWith(u'/') ? message().service() : item) << Qt::endl;
    }

    Q_SCRIPTABLE void RegisterStatusNotifierHost(const QString&) {}
};

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    Watcher watcher;
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.registerObject(u"/StatusNotifierWatcher"_s, &watcher,
        QDBusConnection::ExportScriptableSlots | QDBusConnection::ExportAllProperties);
    return bus.registerService(u"org.kde.StatusNotifierWatcher"_s) ? QCoreApplication::exec() : EXIT_FAILURE;
}

#include "status_notifier_watcher.moc"
