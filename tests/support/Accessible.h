// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QRect>
#include <QString>

#include <optional>

/// A program, window, control or cell of another process as an assistive program sees it: through the accessibility
/// bus (public source: AT-SPI 2). It stays valid as long as the other process keeps the object; everything asked of one
/// that is gone, or of a null one, gives an empty answer.
class Accessible final
{
public:
    /// Numbers of the protocol.
    enum class State { Checked = 4, Enabled = 8, Focusable = 11, Focused = 12, Selected = 23, Showing = 25 };

    Accessible() = default;

    /// Says on the session bus that assistive programs run: programs that start from now on show themselves to them.
    static bool switchOn()
    {
        const QDBusMessage reply = call(QDBusConnection::sessionBus(), QStringLiteral("org.a11y.Bus"),
            QStringLiteral("/org/a11y/bus"), QStringLiteral("org.freedesktop.DBus.Properties.Set"),
            {QStringLiteral("org.a11y.Status"), QStringLiteral("IsEnabled"), QVariant::fromValue(QDBusVariant(true))});
        return reply.type() == QDBusMessage::ReplyMessage && bus().isConnected();
    }

    /// The process of that number; null as long as it does not show itself.
    static Accessible program(qint64 processId)
    {
        const Accessible desktop(
            QStringLiteral("org.a11y.atspi.Registry"), QStringLiteral("/org/a11y/atspi/accessible/root"));
        for (const Accessible& program : desktop.children()) {
            if (bus().interface()->servicePid(program.m_service).value() == processId) {
                return program;
            }
        }
        return {};
    }

    bool isNull() const { return m_service.isEmpty(); }

    QString role() const { return ask(QStringLiteral("Accessible.GetRoleName")).toString(); }

    QString name() const { return property(QStringLiteral("Accessible"), QStringLiteral("Name")).toString(); }

    /// A slider's or stepper's.
    double value() const { return property(QStringLiteral("Value"), QStringLiteral("CurrentValue")).toDouble(); }

    QString text() const { return ask(QStringLiteral("Text.GetText"), {0, -1}).toString(); }

    int rowCount() const { return property(QStringLiteral("Table"), QStringLiteral("NRows")).toInt(); }

    int columnCount() const { return property(QStringLiteral("Table"), QStringLiteral("NColumns")).toInt(); }

    bool is(State state) const
    {
        const auto words = qdbus_cast<QList<uint>>(ask(QStringLiteral("Accessible.GetState")));
        const auto bit = uint(state);
        return qsizetype(bit / 32) < words.size() && (words[bit / 32] >> bit % 32 & 1U) != 0;
    }

    /// In pixels of the screen.
    QRect extents() const
    {
        const QVariant answer = ask(QStringLiteral("Component.GetExtents"), {uint(0)});
        if (!answer.canConvert<QDBusArgument>()) {
            return {};
        }
        return qdbus_cast<QRect>(answer);
    }

    QList<Accessible> children() const
    {
        QList<Accessible> children;
        const QVariant answer = ask(QStringLiteral("Accessible.GetChildren"));
        if (answer.canConvert<QDBusArgument>()) {
            const auto list = answer.value<QDBusArgument>();
            list.beginArray();
            while (!list.atEnd()) {
                children.append(reference(list));
            }
            list.endArray();
        }
        return children;
    }

    Accessible cell(int row, int column) const
    {
        const QVariant answer = ask(QStringLiteral("Table.GetAccessibleAt"), {row, column});
        return answer.canConvert<QDBusArgument>() ? reference(answer.value<QDBusArgument>()) : Accessible();
    }

    /// The cell of a table's row that has this name; null when none has.
    Accessible cellNamed(int row, const QString& name) const
    {
        for (int column = 0; column < columnCount(); ++column) {
            if (const Accessible found = cell(row, column); found.name() == name) {
                return found;
            }
        }
        return {};
    }

    /// Everything below it that is to be seen, tables' cells apart.
    QList<Accessible> showing() const
    {
        QList<Accessible> found;
        for (const Accessible& child : children()) {
            if (child.is(State::Showing)) {
                found.append(child);
                found.append(child.role() == QStringLiteral("table") ? QList<Accessible>() : child.showing());
            }
        }
        return found;
    }

    /// The names of what it can do.
    QStringList actions() const
    {
        QStringList names;
        const QVariant answer = ask(QStringLiteral("Action.GetActions"));
        if (answer.canConvert<QDBusArgument>()) {
            const auto list = answer.value<QDBusArgument>();
            list.beginArray();
            while (!list.atEnd()) {
                QString name;
                QString description;
                QString keys;
                list.beginStructure();
                list >> name >> description >> keys;
                list.endStructure();
                names.append(name);
            }
            list.endArray();
        }
        return names;
    }

    /// Does the first of its actions, without waiting for the end: a dialog that it opens may be that far away.
    bool act() const
    {
        QDBusMessage message = QDBusMessage::createMethodCall(
            m_service, m_path, QStringLiteral("org.a11y.atspi.Action"), QStringLiteral("DoAction"));
        return !isNull() && bus().send(message << 0);
    }

private:
    Accessible(QString service, QString path)
        : m_service(std::move(service))
        , m_path(std::move(path))
    {
    }

    static QDBusMessage call(const QDBusConnection& connection, const QString& service, const QString& path,
        const QString& member, const QVariantList& arguments = {})
    {
        const auto dot = member.lastIndexOf(u'.');
        QDBusMessage message = QDBusMessage::createMethodCall(service, path, member.left(dot), member.mid(dot + 1));
        message.setArguments(arguments);
        constexpr int timeout = 20'000;
        return connection.call(message, QDBus::Block, timeout);
    }

    static QDBusConnection bus()
    {
        static const QString address = call(QDBusConnection::sessionBus(), QStringLiteral("org.a11y.Bus"),
            QStringLiteral("/org/a11y/bus"), QStringLiteral("org.a11y.Bus.GetAddress"))
                                           .arguments()
                                           .value(0)
                                           .toString();
        static const QDBusConnection connection =
            QDBusConnection::connectToBus(address, QStringLiteral("accessibility"));
        return connection;
    }

    QVariant ask(const QString& member, const QVariantList& arguments = {}) const
    {
        const QDBusMessage reply =
            isNull() ? QDBusMessage()
                     : call(bus(), m_service, m_path, QStringLiteral("org.a11y.atspi.") + member, arguments);
        return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0) : QVariant();
    }

    QVariant property(const QString& interface, const QString& name) const
    {
        const QDBusMessage reply =
            isNull() ? QDBusMessage()
                     : call(bus(), m_service, m_path, QStringLiteral("org.freedesktop.DBus.Properties.Get"),
                           {QString(QStringLiteral("org.a11y.atspi.") + interface), name});
        return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0).value<QDBusVariant>().variant()
                                                          : QVariant();
    }

    static Accessible reference(const QDBusArgument& argument)
    {
        QString service;
        QDBusObjectPath path;
        argument.beginStructure();
        argument >> service >> path;
        argument.endStructure();
        return {service, path.path()};
    }

    QString m_service;
    QString m_path;
};
