// SPDX-License-Identifier: MIT
#include <platform/bus/DistributedNotificationCenter.h>
#include <platform/bus/ServiceRegistry.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QProcess>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTest>

#include <DataTable.h>
#include <NotificationRecorder.h>

#include <csignal>

using namespace Qt::StringLiterals;
using PropertyList::Value;

namespace {

const QString path = u"/com/blipsy/BlipsyMenu"_s;
const QString interface = u"com.blipsy.DistributedNotifications"_s;

QDBusMessage signal(const QVariantList& arguments)
{
    QDBusMessage message = QDBusMessage::createSignal(path, interface, u"Posted"_s);
    message.setArguments(arguments);
    return message;
}

} // namespace

class DistributedNotificationCenterTest final : public QObject
{
    Q_OBJECT

private:
    DistributedNotificationCenter& m_center = DistributedNotificationCenter::defaultCenter();
    QDBusConnection m_otherProcess = QDBusConnection::sessionBus();
    pid_t m_daemon = 0;

Q_SIGNALS:
    void seenByOtherProcess(const QString& /*name*/, const QString& /*object*/, const QVariantMap& /*userInfo*/);

private Q_SLOTS:

    void initTestCase()
    {
        QVERIFY(m_otherProcess.isConnected());
        m_daemon = pid_t(m_otherProcess.interface()->servicePid(u"org.freedesktop.DBus"_s).value());
        QVERIFY(m_otherProcess.connect(
            {}, path, interface, u"Posted"_s, this, SIGNAL(seenByOtherProcess(QString, QString, QVariantMap))));
    }

    void ownPostsAreHeardOnceInOrderAndLater()
    {
        const NotificationRecorder heard(u"order"_s);
        QStringList names;
        for (int i = 0; i < 100; ++i) {
            names << QString::number(i);
            m_center.postNotification(names.last(), u"order"_s);
        }
        m_center.postNotification(u"other"_s, u"another object"_s);
        QVERIFY(heard.names().isEmpty());
        QSignalSpy others(this, &DistributedNotificationCenterTest::seenByOtherProcess);
        m_center.postNotification(u"end"_s, u"order"_s);
        QTRY_VERIFY(heard.names().contains(u"end"_s));
        QCOMPARE(heard.names(), names << u"end"_s);
        QTRY_VERIFY(!others.isEmpty() && others.last().first() == u"end"_s);
    }

    void userInfoKeepsItsTypes()
    {
        const auto info = PropertyList::Dictionary::create(
            {{u"text"_s, u"Grüße 😀"_s}, {u"number"_s, qint64(-5'000'000'000)}, {u"real"_s, 0.5}, {u"flag"_s, true},
                {u"data"_s, QByteArray("\0\x01", 2)}, {u"list"_s, PropertyList::Array::create()}});
        QSignalSpy others(this, &DistributedNotificationCenterTest::seenByOtherProcess);
        const NotificationRecorder own(QString{});
        m_center.postNotification(u"typed"_s, u"object"_s, info);
        info->insert(u"text"_s, u"changed afterwards"_s);
        QTRY_VERIFY(own.last(u"typed"_s).userInfo && !others.isEmpty());
        QCOMPARE(own.last(u"typed"_s).userInfo->value(u"text").string(), u"Grüße 😀"_s);
        const QVariantMap expected{{u"text"_s, u"Grüße 😀"_s}, {u"number"_s, qint64(-5'000'000'000)}, {u"real"_s, 0.5},
            {u"flag"_s, true}, {u"data"_s, QByteArray("\0\x01", 2)}};
        QCOMPARE(others.last().at(2).toMap(), expected);
    }

    void signalsOfOthersArriveAndMalformedOnesDoNot()
    {
        const NotificationRecorder heard(QString{});
        m_otherProcess.send(signal({}));
        m_otherProcess.send(signal({u"bad"_s, 5}));
        m_otherProcess.send(signal({u"bad"_s, u"object"_s, u"no dictionary"_s}));
        const QVariantMap info{{u"Phrase"_s, u"new"_s}, {u"Count"_s, uint(7)}, {u"odd"_s, QStringList{u"x"_s}}};
        m_otherProcess.send(signal({u"good"_s, u"object"_s, info}));
        QTRY_COMPARE(heard.names(), QStringList{u"good"_s});
        const auto heardInfo = heard.last(u"good"_s).userInfo;
        QCOMPARE(heardInfo->value(u"Phrase").string(), u"new");
        QCOMPARE(heardInfo->value(u"Count").integerValue(), 7);
        QVERIFY(!heardInfo->contains(u"odd"));
    }

    void serviceIsRegisteredWhileItsProgramHoldsTheName()
    {
        QObject context;
        QStringList answers;
        const auto ask = [&] {
            ServiceRegistry::isRegistered(u"com.example.Service"_s, &context,
                [&](bool registered) { answers << (registered ? u"yes"_s : u"no"_s); });
        };
        ask();
        QTRY_COMPARE(answers, QStringList{u"no"_s});
        QVERIFY(m_otherProcess.registerService(u"com.example.Service"_s));
        ask();
        QTRY_COMPARE(answers.last(), u"yes");
        m_otherProcess.unregisterService(u"com.example.Service"_s);
        ask();
        QTRY_COMPARE(answers.size(), 3);
        QCOMPARE(answers.last(), u"no");
    }

    void hungBusHoldsUpNothingAndDoublesNothing()
    {
        QObject context;
        const NotificationRecorder heard(u"hung"_s);
        ::kill(m_daemon, SIGSTOP);
        const auto resume = qScopeGuard([&] { ::kill(m_daemon, SIGCONT); });
        QElapsedTimer timer;
        timer.start();
        m_center.postNotification(u"during"_s, u"hung"_s);
        bool answered = false;
        ServiceRegistry::isRegistered(u"com.example.Service"_s, &context, [&](bool) { answered = true; });
        QCOMPARE_LT(timer.elapsed(), 50);
        QTRY_VERIFY(answered && heard.names() == QStringList{u"during"_s});
        ::kill(m_daemon, SIGCONT);
        m_center.postNotification(u"after"_s, u"hung"_s);
        QTRY_VERIFY(heard.names().contains(u"after"_s));
        QCOMPARE(heard.names(), (QStringList{u"during"_s, u"after"_s}));
    }

    void processStartsPostsAndEndsWhateverTheBusDoes_data()
    {
        const DataTable<bool, QString> row("isStopped", "address");
        const QString own = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
        row("works", false, own);
        row("hangs", true, own);
        row("absent", false, u"unix:path=/nonexistent/bus"_s);
        row("nonsense", false, u"nonsense"_s);
    }

    void processStartsPostsAndEndsWhateverTheBusDoes()
    {
        const auto [isStopped, address] = currentRow<bool, QString>();
        if (isStopped) {
            ::kill(m_daemon, SIGSTOP);
        }
        const auto resume = qScopeGuard([&] { ::kill(m_daemon, SIGCONT); });
        QProcess probe;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, address);
        probe.setProcessEnvironment(environment);
        QElapsedTimer timer;
        timer.start();
        probe.start(QStringLiteral(NOTIFICATION_PROBE));
        QVERIFY(probe.waitForFinished(5000));
        QCOMPARE_LT(timer.elapsed(), 2000);
        const QList<QByteArray> told = probe.readAllStandardOutput().trimmed().split(' ');
        QCOMPARE(told.first(), "abc");
        QVERIFY2(told.last().toInt() < 50, told.last().constData());
    }

    /// The last one, since there is no bus afterwards.
    void deathOfTheBusLosesNothing()
    {
        const NotificationRecorder heard(u"dead"_s);
        m_center.postNotification(u"before"_s, u"dead"_s);
        ::kill(m_daemon, SIGKILL);
        m_center.postNotification(u"during"_s, u"dead"_s);
        QTRY_COMPARE(heard.names(), (QStringList{u"before"_s, u"during"_s}));
        m_center.postNotification(u"after"_s, u"dead"_s);
        QTRY_COMPARE(heard.names().size(), 3);
    }
};

QTEST_GUILESS_MAIN(DistributedNotificationCenterTest)
#include "DistributedNotificationCenterTest.moc"
