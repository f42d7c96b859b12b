// SPDX-License-Identifier: MIT
#include "PrintServerMessage.h"

#include <platform/bytes/ByteReader.h>
#include <platform/bytes/ByteWriter.h>

using std::chrono::seconds;

namespace {

enum class Operation : quint16 { CreatePrinterSubscriptions = 0x16, RenewSubscription = 0x1A };

/// The tags of groups are below 0x10, those of values are not.
enum class Tag : quint8 {
    OperationGroup = 0x01,
    End = 0x03,
    SubscriptionGroup = 0x06,
    FirstOfValues = 0x10,
    Integer = 0x21,
    Name = 0x42,
    Keyword = 0x44,
    Uri = 0x45,
    Charset = 0x47,
    Language = 0x48,
};

constexpr QByteArrayView subscriptionName = "notify-subscription-id";

void append(QByteArray& message, Tag group)
{
    message.append(char(group));
}

/// Another value of the attribute before has no name.
void append(QByteArray& message, Tag tag, QByteArrayView name, QByteArrayView value)
{
    message.append(char(tag));
    for (const QByteArrayView text : {name, value}) {
        ByteWriter::appendBig(message, quint16(text.size()));
        message.append(text);
    }
}

void append(QByteArray& message, QByteArrayView name, qint32 value)
{
    QByteArray bytes;
    ByteWriter::appendBig(bytes, value);
    append(message, Tag::Integer, name, bytes);
}

QByteArray begin(Operation operation, const QByteArray& user)
{
    QByteArray message;
    constexpr quint16 version = 0x0200;
    constexpr quint32 request = 1;
    ByteWriter::appendBig(message, version);
    ByteWriter::appendBig(message, quint16(operation));
    ByteWriter::appendBig(message, request);
    append(message, Tag::OperationGroup);
    append(message, Tag::Charset, "attributes-charset", "utf-8");
    append(message, Tag::Language, "attributes-natural-language", "en");
    append(message, Tag::Uri, "printer-uri", "ipp://localhost/");
    append(message, Tag::Name, "requesting-user-name", user);
    return message;
}

QByteArray finish(QByteArray message, const QByteArray& user, seconds lease)
{
    append(message, "notify-lease-duration", qint32(lease.count()));
    append(message, Tag::End);
    // Of HTTP/1.0, since its answers end with the connection and come in one piece.
    return "POST / HTTP/1.0\r\nHost: localhost\r\nContent-Type: application/ipp\r\nAuthorization: PeerCred " + user +
           "\r\nContent-Length: " + QByteArray::number(message.size()) + "\r\n\r\n" + message;
}

} // namespace

QByteArray PrintServerMessage::subscribe(const QByteArray& user, seconds lease)
{
    QByteArray message = begin(Operation::CreatePrinterSubscriptions, user);
    append(message, Tag::SubscriptionGroup);
    append(message, Tag::Uri, "notify-recipient-uri", "dbus://");
    append(message, Tag::Keyword, "notify-events", "job-state-changed");
    append(message, Tag::Keyword, {}, "job-completed");
    return finish(std::move(message), user, lease);
}

QByteArray PrintServerMessage::renew(const QByteArray& user, qint32 subscription, seconds lease)
{
    QByteArray message = begin(Operation::RenewSubscription, user);
    append(message, subscriptionName, subscription);
    append(message, Tag::SubscriptionGroup);
    return finish(std::move(message), user, lease);
}

PrintServerMessage::Answer PrintServerMessage::read(QByteArrayView answer)
{
    constexpr QByteArrayView endOfHeader = "\r\n\r\n";
    constexpr quint16 firstOfRefusals = 0x100;
    const qsizetype header = answer.indexOf(endOfHeader);
    ByteReader reader(header < 0 ? QByteArrayView() : answer.sliced(header + endOfHeader.size()), QSysInfo::BigEndian);
    reader.take(sizeof(quint16)); // the version
    Answer result{reader.number<quint16>() < firstOfRefusals};
    reader.take(sizeof(quint32)); // the request
    while (!reader.atEnd()) {
        const auto tag = Tag(reader.number<quint8>());
        if (tag < Tag::FirstOfValues) {
            continue;
        }
        const QByteArrayView name = reader.take(reader.number<quint16>());
        const QByteArrayView value = reader.take(reader.number<quint16>());
        if (tag == Tag::Integer && name == subscriptionName && value.size() == sizeof(qint32)) {
            result.subscription = qFromBigEndian<qint32>(value.data());
        }
    }
    return result.isGranted && !reader.problem().isNoted() ? result : Answer();
}
