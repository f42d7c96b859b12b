// SPDX-License-Identifier: MIT
#include <core/Settings.h>
#include <helper/talk/MediaPlayers.h>
#include <helper/talk/Talk.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QDateTime>
#include <QLocalServer>
#include <QLocalSocket>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <DataTable.h>

using namespace Qt::StringLiterals;

namespace {

const QString propertiesInterface = u"org.freedesktop.DBus.Properties"_s;

/// An object of a service with properties that can change. Stands in for a media player and the session manager.
class Properties final : public QDBusVirtualObject
{
    Q_OBJECT

public:
    Properties(const QString& service, const QString& path, const QString& interface, const QVariantMap& values)
        : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, service))
        , m_path(path)
        , m_interface(interface)
        , m_values(values)
    {
        m_bus.registerVirtualObject(path, this);
        m_bus.registerService(service);
    }

    ~Properties() override { QDBusConnection::disconnectFromBus(m_bus.name()); }

    Q_DISABLE_COPY_MOVE(Properties)

    void change(const QVariantMap& values)
    {
        m_values.insert(values);
        QDBusMessage signal = QDBusMessage::createSignal(m_path, propertiesInterface, u"PropertiesChanged"_s);
        signal.setArguments({m_interface, values, QStringList()});
        m_bus.send(signal);
    }

    int reads() const { return m_reads; }

    QString introspect(const QString&) const override { return {}; }

    /// All are asked for together.
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        ++m_reads;
        return connection.send(message.createReply(m_values));
    }

private:
    QDBusConnection m_bus;
    QString m_path;
    QString m_interface;
    QVariantMap m_values;
    int m_reads = 0;
};

/// Shows notifications, by writing them down.
class NotificationServer final : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    NotificationServer()
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        bus.registerObject(u"/org/freedesktop/Notifications"_s, this, QDBusConnection::ExportScriptableSlots);
        bus.registerService(u"org.freedesktop.Notifications"_s);
    }

    /// "title|body", and which number each replaces.
    QStringList m_shown;
    QList<uint> m_replaced;
    QStringList m_abilities;

public Q_SLOTS:

    Q_SCRIPTABLE QStringList GetCapabilities() const { return m_abilities; }

    Q_SCRIPTABLE uint Notify(const QString&, uint replaced, const QString&, const QString& title, const QString& body,
        const QStringList&, const QVariantMap&, int)
    {
        m_replaced.append(replaced);
        m_shown.append(title + u'|' + body);
        return 7;
    }
};

/// Understands as much of the speech service's protocol as takes to hear what is said.
class SpeechService final : public QObject
{
public:
    explicit SpeechService(const QString& path)
    {
        connect(&m_server, &QLocalServer::newConnection, this, [this] {
            QLocalSocket* const client = m_server.nextPendingConnection();
            connect(client, &QLocalSocket::readyRead, this, [this, client] { answer(*client); });
        });
        m_server.listen(path);
    }

    QStringList m_said;

private:
    void answer(QLocalSocket& client)
    {
        while (client.canReadLine()) {
            const QString line = QString::fromUtf8(client.readLine()).trimmed();
            if (m_isText && line != u"."_s) {
                m_said.append(line);
                continue;
            }
            m_isText = line == u"SPEAK"_s;
            client.write(m_isText ? "230 OK RECEIVING DATA\r\n" : "225-12\r\n225 OK MESSAGE QUEUED\r\n");
        }
    }

    QLocalServer m_server;
    bool m_isText = false;
};

QVariantMap playing(const QString& title, const QString& artist)
{
    return {{u"PlaybackStatus"_s, u"Playing"_s},
        {u"Metadata"_s, QVariantMap{{u"xesam:title"_s, title}, {u"xesam:artist"_s, QStringList{artist}}}}};
}

} // namespace

class TalkTest final : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    int m_services = 0;
    std::unique_ptr<NotificationServer> m_notifications;
    std::unique_ptr<SpeechService> m_speech;

    static std::unique_ptr<Properties> player(const QString& name, const QVariantMap& values)
    {
        return std::make_unique<Properties>(u"org.mpris.MediaPlayer2."_s + name, u"/org/mpris/MediaPlayer2"_s,
            u"org.mpris.MediaPlayer2.Player"_s, values);
    }

private Q_SLOTS:

    void init()
    {
        // One object at a time has the path.
        m_notifications.reset();
        m_notifications = std::make_unique<NotificationServer>();
        const QString path = m_folder.filePath(QString::number(++m_services));
        qputenv("SPEECHD_ADDRESS", "unix_socket:" + path.toUtf8());
        m_speech = std::make_unique<SpeechService>(path);
        Settings::idleTalkIntervalPref.store(u"0"_s);
    }

    void tracksAreAnnounced_data()
    {
        const DataTable<int, bool, QString, QString, QString> row("setting", "markup", "artist", "shown", "said");
        row("title", 1, false, u"Somebody"_s, u"<b>|"_s, u"<b>"_s);
        row("title and artist", 2, false, u"A & B"_s, u"<b>|A & B"_s, u"<b>, A & B"_s);
        row("markup", 2, true, u"<i>"_s, u"<b>|&lt;i&gt;"_s, u"<b>, <i>"_s);
        row("long", 2, false, QString(5'000, u'x'), u"<b>|"_s + QString(999, u'x') + u'…',
            u"<b>, "_s + QString(295, u'x'));
        row("protocol's own mark", 2, false, u"\r\n.\r\nQUIT"_s, u"<b>|\r\n.\r\nQUIT"_s, u"<b>,   .  QUIT"_s);
    }

    void tracksAreAnnounced()
    {
        const auto [setting, markup, artist, shown, said] = currentRow<int, bool, QString, QString, QString>();
        m_notifications->m_abilities = markup ? QStringList{u"body-markup"_s} : QStringList();
        Settings::announcerPref.store(setting);
        const auto before = player(u"before"_s, playing(u"old"_s, {}));
        Talk talk;
        talk.readSettings();
        QTRY_COMPARE(before->reads(), 1);
        const auto after = player(u"after"_s, playing(u"<b>"_s, artist));
        QTRY_COMPARE(m_notifications->m_shown, QStringList{shown});
        QTRY_COMPARE(m_speech->m_said, QStringList{said});
        // A pause starts no track, another title does.
        after->change({{u"PlaybackStatus"_s, u"Paused"_s}});
        after->change({{u"PlaybackStatus"_s, u"Playing"_s}});
        before->change(playing(u"next"_s, {}));
        QTRY_COMPARE(m_notifications->m_shown, QStringList({shown, u"next|"_s}));
        QCOMPARE(m_notifications->m_replaced, QList<uint>({0, 7}));
        // Who listens later hears later.
        const MediaPlayers players;
        const QSignalSpy started(&players, &MediaPlayers::trackStarted);
        const auto reads = before->reads();
        QTRY_VERIFY(before->reads() > reads);
        talk.setPaused(true);
        before->change(playing(u"unheard"_s, {}));
        QTRY_COMPARE(started.size(), 1);
        talk.setPaused(false);
        before->change(playing(u"last"_s, {}));
        QTRY_COMPARE(m_notifications->m_shown.mid(2), QStringList{u"last|"_s});
    }

    void idleTimeOfTheServer()
    {
        IdleTime idle;
        const QSignalSpy reached(&idle, &IdleTime::reached);
        idle.setLimit(std::chrono::milliseconds(300));
        for (int times = 1; times <= 2; ++times) {
            QCOMPARE(QProcess::execute(u"xdotool"_s, {u"key"_s, u"a"_s}), 0);
            QTRY_VERIFY(reached.size() >= times);
        }
    }

    void idleTimeOfTheSessionManager()
    {
        qputenv("WAYLAND_DISPLAY", "none");
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", qgetenv("DBUS_SESSION_BUS_ADDRESS"));
        Properties manager(u"org.freedesktop.login1"_s, u"/org/freedesktop/login1"_s,
            u"org.freedesktop.login1.Manager"_s,
            {{u"IdleHint"_s, false}, {u"IdleSinceHint"_s, QVariant::fromValue<quint64>(1)}});
        IdleTime idle;
        qunsetenv("WAYLAND_DISPLAY");
        const QSignalSpy reached(&idle, &IdleTime::reached);
        idle.setLimit(std::chrono::milliseconds(500));
        QTRY_COMPARE(manager.reads(), 1);
        const auto now = quint64(QDateTime::currentMSecsSinceEpoch()) * 1'000;
        manager.change({{u"IdleHint"_s, true}, {u"IdleSinceHint"_s, QVariant::fromValue(now)}});
        QTRY_COMPARE(reached.size(), 1);
        QVERIFY(quint64(QDateTime::currentMSecsSinceEpoch()) * 1'000 >= now + 500'000);
    }
};

QTEST_MAIN(TalkTest)
#include "TalkTest.moc"
