// SPDX-License-Identifier: MIT
#include <platform/bus/BusProperties.h>
#include <platform/bus/CallMonitor.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QSignalSpy>
#include <QTest>

#include <SystemBus.h>

#include <optional>

using namespace Qt::StringLiterals;
using PropertyList::Value;

namespace {

const QString name = u"com.example.Lamp"_s;
const QString path = u"/com/example/Lamp"_s;
const QString properties = u"org.freedesktop.DBus.Properties"_s;

/// A service with one property, on a connection of its own to the bus at @p address.
class Lamp final : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.example.Lamp")
    Q_PROPERTY(int Level MEMBER level)

public:
    explicit Lamp(const QString& connectionName)
        : m_connection(QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS"), connectionName))
        , m_connectionName(connectionName)
    {
        m_connection.registerObject(path, this, QDBusConnection::ExportAllProperties);
    }

    ~Lamp() override { QDBusConnection::disconnectFromBus(m_connectionName); }

    Q_DISABLE_COPY_MOVE(Lamp)

    QDBusConnection& connection() { return m_connection; }

    void tell(const QVariantList& arguments)
    {
        QDBusMessage message = QDBusMessage::createSignal(path, properties, u"PropertiesChanged"_s);
        message.setArguments(arguments);
        m_connection.send(message);
    }

    void tellLevel(int now) { tell({name, QVariantMap{{u"Level"_s, now}}, QStringList()}); }

    int level = 1;

private:
    QDBusConnection m_connection;
    QString m_connectionName;
};

} // namespace

class SubscriptionsTest final : public QObject
{
    Q_OBJECT

private:
    std::optional<SystemBus> m_daemon;

private Q_SLOTS:

    void initTestCase() { m_daemon.emplace(); }

    void propertiesAreFollowedWhateverComesAndGoes()
    {
        BusProperties followed(
            MessageBus::system(), {name.toLatin1(), path.toLatin1(), name.toLatin1(), {u"Level"_s}}, nullptr);
        QSignalSpy known(&followed, &BusProperties::known);
        QSignalSpy changed(&followed, &BusProperties::changed);
        followed.follow();
        const auto last = [&changed] { return changed.last().at(2).value<Value>().integerValue(); };

        std::optional<Lamp> lamp(u"first"_s);
        QVERIFY(lamp->connection().registerService(name));
        QTRY_COMPARE(known.size(), 1);
        QCOMPARE(followed.value(u"Level").integerValue(), 1);

        // What another program sends, what is malformed and what was known already is no change.
        Lamp impostor(u"impostor"_s);
        impostor.tellLevel(13);
        lamp->tell({});
        lamp->tell({5, u"Level"_s});
        lamp->tell({name, QVariantMap{{u"Other"_s, 3}, {u"Level"_s, QVariant::fromValue(QStringList{u"x"_s})}}, 1});
        lamp->tellLevel(2);
        QTRY_VERIFY(!changed.isEmpty() && last() == 2);
        lamp->tellLevel(2);
        lamp->level = 3;
        lamp->tell({name, QVariantMap(), QStringList{u"Level"_s}});
        QTRY_COMPARE(last(), 3);
        for (const QList<QVariant>& change : std::as_const(changed)) {
            QVERIFY(change.at(2).value<Value>().integerValue() != 13);
        }

        lamp.reset();
        QTRY_VERIFY(followed.value(u"Level").isNull());
        m_daemon->stop();
        m_daemon->start();
        lamp.emplace(u"second"_s);
        QVERIFY(lamp->connection().registerService(name));
        QTRY_COMPARE_WITH_TIMEOUT(known.size(), 2, 20'000);
        lamp->tellLevel(7);
        QTRY_COMPARE(last(), 7);
    }

    void callsOfOthersAreHeardAndAnsweredByNobody()
    {
        CallMonitor monitor("com.example.Bell", "Ring", nullptr);
        QSignalSpy called(&monitor, &CallMonitor::called);
        monitor.start();
        QDBusConnection caller = QDBusConnection::sessionBus();
        QDBusMessage call =
            QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/"_s, u"com.example.Bell"_s, u"Ring"_s);
        call.setArguments({u"loud"_s, QVariantMap{{u"times"_s, 3}}});
        // Until the monitor stands, calls go by unheard.
        QTRY_VERIFY(caller.send(call) && !called.isEmpty());
        const auto heard = called.first().first().value<MessageBus::Signal>();
        QCOMPARE(heard.argument(0).string(), u"loud");
        QCOMPARE(heard.argument(1).dictionary()->value(u"times").integerValue(), 3);
        QVERIFY(heard.argument(2).isNull());
    }
};

QTEST_GUILESS_MAIN(SubscriptionsTest)
#include "SubscriptionsTest.moc"
