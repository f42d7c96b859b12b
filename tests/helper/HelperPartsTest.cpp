// SPDX-License-Identifier: MIT
#include <core/Changes.h>
#include <helper/EventLimiter.h>
#include <helper/HelperContract.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QSignalSpy>
#include <QTest>

#include <DataTable.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Posts a notification as another program does, which @p bus is.
bool post(const QDBusConnection& bus, const QString& name)
{
    QDBusMessage message =
        QDBusMessage::createSignal(u"/com/blipsy/BlipsyMenu"_s, u"com.blipsy.DistributedNotifications"_s, u"Posted"_s);
    message.setArguments({name, helperIdentifier, QVariantMap()});
    return bus.send(message);
}

} // namespace

class HelperPartsTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void burstIsThinnedOut_data()
    {
        const DataTable<int, int, int, int> row("code", "events", "milliseconds", "heard");
        row("flood", 0, 1000, 1, 20);
        row("steady and slow", 79, 20, 60, 20);
        row("two at once", 3, 2, 0, 1);
        row("next second", 3, 2000, 1, 40);
        row("no such event", 80, 5, 100, 0);
        row("negative", -1, 5, 100, 0);
    }

    void burstIsThinnedOut()
    {
        const auto [code, events, milliseconds, heard] = currentRow<int, int, int, int>();
        EventLimiter limiter;
        int admitted = 0;
        for (int event = 0; event < events; ++event) {
            const EventLimiter::Time now(std::chrono::milliseconds(event * milliseconds));
            admitted += limiter.admit(code, now) ? 1 : 0;
        }
        QCOMPARE(admitted, heard);
    }

    void burstOfChangesIsOneChangeAndItsEventComesLast()
    {
        HelperContract contract;
        QSignalSpy begun(&contract, &HelperContract::begun);
        contract.begin();
        QTRY_COMPARE(begun.size(), 1);
        QStringList heard;
        connect(&contract, &HelperContract::changed, this, [&] { heard << u"changed"_s; });
        connect(&contract, &HelperContract::eventRequested, this, [&](int code) { heard << QString::number(code); });
        const auto event = [](const PropertyList::Value& code) {
            Changes::tell(NotificationName::playEvent, PropertyList::Dictionary::create({{u"Event"_s, code}}));
        };
        for (int step = 0; step < 20; ++step) {
            Changes::tell(NotificationName::preferencesChanged);
            Changes::tell(NotificationName::refreshMenu);
            event(u"7"_s);
        }
        Changes::tell(NotificationName::playEvent);
        event(u"no code"_s);
        QTRY_COMPARE(heard, QStringList{u"changed"_s});
        contract.concludeChange();
        QCOMPARE(heard, (QStringList{u"changed"_s, u"7"_s}));
        event(u"8"_s);
        QTRY_COMPARE(heard.last(), u"8");
    }

    void typingIsHeldUntilItsHolderSaysSoOrIsGone_data()
    {
        const DataTable<bool> row("isGone");
        row("says so", false);
        row("is gone", true);
    }

    void typingIsHeldUntilItsHolderSaysSoOrIsGone()
    {
        QFETCH(bool, isGone);
        HelperContract contract;
        QSignalSpy held(&contract, &HelperContract::typingHeld);
        contract.begin();
        QDBusConnection pane =
            QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), u"pane"_s);
        QVERIFY(post(pane, NotificationName::turnExpansionOff));
        QTRY_COMPARE(held.size(), 1);
        QCOMPARE(held.takeFirst(), QVariantList{true});
        QVERIFY(isGone || post(pane, NotificationName::turnExpansionOn));
        QDBusConnection::disconnectFromBus(u"pane"_s);
        pane = QDBusConnection(QString());
        QTRY_COMPARE(held.size(), 1);
        QCOMPARE(held.takeFirst(), QVariantList{false});
    }
};

QTEST_GUILESS_MAIN(HelperPartsTest)
#include "HelperPartsTest.moc"
