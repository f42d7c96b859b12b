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
    void seenByOtherProcess(const QString& name, const QString& object, const QVariantMap& userInfo);

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
        QObject context;
        QStringList heard;
        m_center.addObserver(
            &context, {}, u"order"_s, [&](const DistributedNotification& posted) { heard << posted.name; });
        QStringList names;
        for (int i = 0; i < 100; ++i) {
            names << QString::number(i);
            m_center.postNotification(names.last(), u"order"_s);
        }
        m_center.postNotification(u"other"_s, u"another object"_s);
        QVERIFY(heard.isEmpty());
        QSignalSpy others(this, &DistributedNotificationCenterTest::seenByOtherProcess);
        m_center.postNotification(u"end"_s, u"order"_s);
        QTRY_VERIFY(heard.contains(u"end"_s));
        QCOMPARE(heard, names << u"end"_s);
        QTRY_VERIFY(!others.isEmpty() && others.last().first() == u"end"_s);
    }

    void userInfoKeepsItsTypes()
    {
        auto info = PropertyList::Dictionary::create();
        info->insert(u"text"_s, u"Grüße 😀"_s);
        info->insert(u"number"_s, qint64(-5'000'000'000));
        info->insert(u"real"_s, 0.5);
        info->insert(u"flag"_s, true);
        info->insert(u"data"_s, QByteArray("\0\x01", 2));
        info->insert(u"list"_s, PropertyList::Array::create());
        QSignalSpy others(this, &DistributedNotificationCenterTest::seenByOtherProcess);
        QObject context;
        PropertyList::DictionaryPointer own;
        m_center.addObserver(
            &context, u"typed"_s, {}, [&](const DistributedNotification& posted) { own = posted.userInfo; });
        m_center.postNotification(u"typed"_s, u"object"_s, info);
        info->insert(u"text"_s, u"changed afterwards"_s);
        QTRY_VERIFY(own && !others.isEmpty());
        QCOMPARE(own->value(u"text").string(), u"Grüße 😀"_s);
        const QVariantMap expected{{u"text"_s, u"Grüße 😀"_s}, {u"number"_s, qint64(-5'000'000'000)}, {u"real"_s, 0.5},
            {u"flag"_s, true}, {u"data"_s, QByteArray("\0\x01", 2)}};
        QCOMPARE(others.last().at(2).toMap(), expected);
    }

    void signalsOfOthersArriveAndMalformedOnesDoNot()
    {
        QObject context;
        QList<DistributedNotification> heard;
        m_center.addObserver(&context, {}, {}, [&](const DistributedNotification& posted) { heard << posted; });
        m_otherProcess.send(signal({}));
        m_otherProcess.send(signal({u"bad"_s, 5}));
        m_otherProcess.send(signal({u"bad"_s, u"object"_s, u"no dictionary"_s}));
        const QVariantMap info{{u"Phrase"_s, u"new"_s}, {u"Count"_s, uint(7)}, {u"odd"_s, QStringList{u"x"_s}}};
        m_otherProcess.send(signal({u"good"_s, u"object"_s, info}));
        QTRY_COMPARE(heard.size(), 1);
        QCOMPARE(heard.first().name, u"good");
        QCOMPARE(heard.first().userInfo->value(u"Phrase").string(), u"new");
        QCOMPARE(heard.first().userInfo->value(u"Count").integerValue(), 7);
        QVERIFY(!heard.first().userInfo->contains(u"odd"));
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
        QStringList heard;
        m_center.addObserver(
            &context, {}, u"hung"_s, [&](const DistributedNotification& posted) { heard << posted.name; });
        ::kill(m_daemon, SIGSTOP);
        const auto resume = qScopeGuard([&] { ::kill(m_daemon, SIGCONT); });
        QElapsedTimer timer;
        timer.start();
        m_center.postNotification(u"during"_s, u"hung"_s);
        bool answered = false;
        ServiceRegistry::isRegistered(u"com.example.Service"_s, &context, [&](bool) { answered = true; });
        QVERIFY(timer.elapsed() < 50);
        QTRY_VERIFY(answered && heard == QStringList{u"during"_s});
        ::kill(m_daemon, SIGCONT);
        m_center.postNotification(u"after"_s, u"hung"_s);
        QTRY_VERIFY(heard.contains(u"after"_s));
        QCOMPARE(heard, (QStringList{u"during"_s, u"after"_s}));
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
        QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
        const QList<QByteArray> told = probe.readAllStandardOutput().trimmed().split(' ');
        QCOMPARE(told.first(), "abc");
        QVERIFY2(told.last().toInt() < 50, told.last().constData());
    }

    /// The last one, since there is no bus afterwards.
    void deathOfTheBusLosesNothing()
    {
        QObject context;
        QStringList heard;
        m_center.addObserver(
            &context, {}, u"dead"_s, [&](const DistributedNotification& posted) { heard << posted.name; });
        m_center.postNotification(u"before"_s, u"dead"_s);
        ::kill(m_daemon, SIGKILL);
        m_center.postNotification(u"during"_s, u"dead"_s);
        QTRY_COMPARE(heard, (QStringList{u"before"_s, u"during"_s}));
        m_center.postNotification(u"after"_s, u"dead"_s);
        QTRY_COMPARE(heard.size(), 3);
    }
};

QTEST_GUILESS_MAIN(DistributedNotificationCenterTest)
#include "DistributedNotificationCenterTest.moc"
