// SPDX-License-Identifier: MIT
#include <platform/bus/DistributedNotificationCenter.h>

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

/// Posts three notifications, ends when it has heard three, and tells their names and the longest time that a call
/// took.
int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    QObject context;
    QString heard;
    QElapsedTimer timer;
    timer.start();
    auto& center = DistributedNotificationCenter::defaultCenter();
    center.addObserver(&context, {}, u"probe"_s, [&](const DistributedNotification& notification) {
        heard += notification.name;
        if (heard.size() >= 3) {
            QCoreApplication::quit();
        }
    });
    qint64 longest = timer.restart();
    for (const QString& name : {u"a"_s, u"b"_s, u"c"_s}) {
        center.postNotification(name, u"probe"_s);
        longest = std::max(longest, timer.restart());
    }
    QCoreApplication::exec();
    std::printf("%s %lld\n", qPrintable(heard), static_cast<long long>(longest));
    return 0;
}
