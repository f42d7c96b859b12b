// SPDX-License-Identifier: MIT
#pragma once

#include "MessageBus.h"

#include <QObject>
#include <QStringList>

/// Some properties of one object of a service, followed: read when the service appears, told when they change.
class BusProperties final : public QObject
{
    Q_OBJECT

public:
    struct Source
    {
        QByteArray service;
        QByteArray path;
        QByteArray interface;
        /// The properties that count; no others are kept.
        QStringList names;
    };

    BusProperties(MessageBus& bus, Source source, QObject* parent);

    /// Begins; silent as long as the service is absent.
    void follow();

    /// Null while it is not known.
    PropertyList::Value value(QStringView name) const { return m_values->value(name); }

Q_SIGNALS:
    /// The service has appeared, and the properties are known.
    void known();
    /// A property that was known has another value: no first reading.
    void changed(const QString& name, const PropertyList::Value& before, const PropertyList::Value& now);

private:
    void readAll(bool hasAppeared);
    void receive(const MessageBus::Signal& signal);
    void take(const PropertyList::Value& values);

    MessageBus& m_bus;
    Source m_source;
    PropertyList::DictionaryPointer m_values = PropertyList::Dictionary::create();
};
