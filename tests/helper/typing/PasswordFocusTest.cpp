// SPDX-License-Identifier: MIT
#include <helper/typing/PasswordFocus.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// The accessibility bus with all that is on it, played on the session's own: a field has the role that its path ends
/// with.
class Accessibility final : public QDBusVirtualObject
{
public:
    Accessibility()
    {
        m_bus.registerVirtualObject(u"/"_s, this, QDBusConnection::SubPath);
        m_bus.registerService(u"org.a11y.atspi.Registry"_s);
        m_bus.registerService(u"org.a11y.Bus"_s);
    }

    QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        QVariant answer;
        if (message.member() == u"GetAll") {
            answer = QVariantMap{{u"IsEnabled"_s, true}};
        } else if (message.member() == u"GetAddress") {
            answer = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
        } else if (message.member() == u"GetRole") {
            answer = message.path().section(u'/', -1).toUInt();
        } else if (message.member() == u"RegisterEvent") {
            isListenedTo = message.arguments().value(0) == u"object:state-changed:focused"_s;
        }
        return connection.send(message.createReply(answer));
    }

    void tellFocus(int role, bool hasFocus)
    {
        QDBusMessage signal =
            QDBusMessage::createSignal(u"/field/%1"_s.arg(role), u"org.a11y.atspi.Event.Object"_s, u"StateChanged"_s);
        signal << u"focused"_s << int(hasFocus) << 0 << QVariant::fromValue(QDBusVariant(0));
        m_bus.send(signal);
    }

    void tellStatus(bool isEnabled)
    {
        QDBusMessage signal = QDBusMessage::createSignal(
            u"/org/a11y/bus"_s, u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s);
        signal << u"org.a11y.Status"_s << QVariantMap{{u"IsEnabled"_s, isEnabled}} << QStringList();
        m_bus.send(signal);
    }

    bool isListenedTo = false;

private:
    QDBusConnection m_bus = QDBusConnection::sessionBus();
};

} // namespace

class PasswordFocusTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void fieldThatHidesItsTextIsTold()
    {
        constexpr int passwordText = 40;
        constexpr int entry = 79;
        PasswordFocus focus;
        bool isSecret = false;
        connect(&focus, &PasswordFocus::changed, this, [&isSecret](bool now) { isSecret = now; });
        const QSignalSpy changes(&focus, &PasswordFocus::changed);
        focus.follow();
        Accessibility accessibility;
        QTRY_VERIFY(accessibility.isListenedTo);
        accessibility.tellFocus(entry, true);
        QTRY_COMPARE(changes.size(), 2);
        QVERIFY(!isSecret);
        accessibility.tellFocus(passwordText, true);
        QTRY_VERIFY(isSecret);
        accessibility.tellFocus(entry, false);
        accessibility.tellFocus(passwordText, false);
        QTRY_COMPARE(changes.size(), 4);
        QVERIFY(!isSecret);
        accessibility.tellFocus(passwordText, true);
        QTRY_VERIFY(isSecret);
        accessibility.tellStatus(false);
        QTRY_VERIFY(!isSecret);
    }
};

QTEST_GUILESS_MAIN(PasswordFocusTest)
#include "PasswordFocusTest.moc"
