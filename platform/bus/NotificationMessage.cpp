// SPDX-License-Identifier: MIT
#include "NotificationMessage.h"

#include <systemd/sd-bus.h>

using PropertyList::Type;
using PropertyList::Value;

namespace {

bool isSendable(const Value& value)
{
    switch (value.type()) {
    case Type::Boolean:
    case Type::Integer:
    case Type::Real:
    case Type::String:
    case Type::Data:
        return true;
    default:
        return false;
    }
}

int appendValue(sd_bus_message* message, const Value& value)
{
    switch (value.type()) {
    case Type::Boolean:
        return sd_bus_message_append(message, "v", "b", int(value.integerValue()));
    case Type::Integer:
        return sd_bus_message_append(message, "v", "x", int64_t(value.integerValue()));
    case Type::Real:
        return sd_bus_message_append(message, "v", "d", value.doubleValue());
    case Type::String:
        return sd_bus_message_append(message, "v", "s", value.string().toUtf8().constData());
    default:
        break;
    }
    const QByteArray data = value.data();
    const int opened = sd_bus_message_open_container(message, SD_BUS_TYPE_VARIANT, "ay");
    const int appended =
        opened < 0 ? opened : sd_bus_message_append_array(message, 'y', data.constData(), size_t(data.size()));
    return appended < 0 ? appended : sd_bus_message_close_container(message);
}

int appendEntry(sd_bus_message* message, const QString& key, const Value& value)
{
    int result = sd_bus_message_open_container(message, SD_BUS_TYPE_DICT_ENTRY, "sv");
    result = result < 0 ? result : sd_bus_message_append(message, "s", key.toUtf8().constData());
    result = result < 0 ? result : appendValue(message, value);
    return result < 0 ? result : sd_bus_message_close_container(message);
}

template <typename Number>
Value readNumber(sd_bus_message* message, char type)
{
    Number number = 0;
    return sd_bus_message_read_basic(message, type, &number) > 0 ? Value(number) : Value();
}

/// Narrow integers arrive in a variable of their own width.
template <typename Number>
Value readInteger(sd_bus_message* message, char type)
{
    Number number = 0;
    return sd_bus_message_read_basic(message, type, &number) > 0 ? Value(qint64(number)) : Value();
}

QString readText(sd_bus_message* message)
{
    const char* text = nullptr;
    return sd_bus_message_read_basic(message, SD_BUS_TYPE_STRING, &text) > 0 ? QString::fromUtf8(text) : QString();
}

Value readBoolean(sd_bus_message* message)
{
    int boolean = 0;
    return sd_bus_message_read_basic(message, SD_BUS_TYPE_BOOLEAN, &boolean) > 0 ? Value(boolean != 0) : Value();
}

Value readData(sd_bus_message* message)
{
    const void* bytes = nullptr;
    size_t size = 0;
    if (sd_bus_message_read_array(message, SD_BUS_TYPE_BYTE, &bytes, &size) < 0) {
        return {};
    }
    return QByteArray(static_cast<const char*>(bytes), qsizetype(size));
}

Value readContent(sd_bus_message* message, QByteArrayView signature)
{
    if (signature == "ay") {
        return readData(message);
    }
    const char type = signature.size() == 1 ? signature.front() : '\0';
    switch (type) {
    case SD_BUS_TYPE_STRING:
        return readText(message);
    case SD_BUS_TYPE_BOOLEAN:
        return readBoolean(message);
    case SD_BUS_TYPE_BYTE:
        return readInteger<uint8_t>(message, type);
    case SD_BUS_TYPE_INT16:
        return readInteger<int16_t>(message, type);
    case SD_BUS_TYPE_UINT16:
        return readInteger<uint16_t>(message, type);
    case SD_BUS_TYPE_INT32:
        return readInteger<int32_t>(message, type);
    case SD_BUS_TYPE_UINT32:
        return readInteger<uint32_t>(message, type);
    case SD_BUS_TYPE_INT64:
        return readNumber<qint64>(message, type);
    case SD_BUS_TYPE_UINT64:
        return readNumber<quint64>(message, type);
    case SD_BUS_TYPE_DOUBLE:
        return readNumber<double>(message, type);
    default:
        sd_bus_message_skip(message, signature.data());
        return {};
    }
}

Value readVariant(sd_bus_message* message)
{
    const char* signature = nullptr;
    if (sd_bus_message_peek_type(message, nullptr, &signature) <= 0 ||
        sd_bus_message_enter_container(message, SD_BUS_TYPE_VARIANT, signature) <= 0) {
        return {};
    }
    Value value = readContent(message, signature);
    sd_bus_message_exit_container(message);
    return value;
}

} // namespace

PropertyList::DictionaryPointer NotificationMessage::sendableUserInfo(const PropertyList::DictionaryPointer& userInfo)
{
    if (!userInfo) {
        return {};
    }
    PropertyList::DictionaryPointer sendable = PropertyList::Dictionary::create();
    for (const auto& [key, value] : *userInfo) {
        if (isSendable(value)) {
            sendable->insert(key, value);
        }
    }
    return sendable->isEmpty() ? PropertyList::DictionaryPointer() : sendable;
}

bool NotificationMessage::append(sd_bus_message* message, const DistributedNotification& notification)
{
    int result = sd_bus_message_append(
        message, "ss", notification.name.toUtf8().constData(), notification.object.toUtf8().constData());
    result = result < 0 ? result : sd_bus_message_open_container(message, SD_BUS_TYPE_ARRAY, "{sv}");
    if (notification.userInfo) {
        for (const auto& [key, value] : *notification.userInfo) {
            result = result < 0 ? result : appendEntry(message, key, value);
        }
    }
    return result >= 0 && sd_bus_message_close_container(message) >= 0;
}

std::optional<DistributedNotification> NotificationMessage::read(sd_bus_message* message)
{
    if (sd_bus_message_has_signature(message, "ssa{sv}") <= 0) {
        return std::nullopt;
    }
    DistributedNotification notification;
    notification.name = readText(message);
    notification.object = readText(message);
    PropertyList::DictionaryPointer userInfo = PropertyList::Dictionary::create();
    sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "{sv}");
    while (sd_bus_message_enter_container(message, SD_BUS_TYPE_DICT_ENTRY, "sv") > 0) {
        const QString key = readText(message);
        userInfo->insert(key, readVariant(message));
        sd_bus_message_exit_container(message);
    }
    if (!userInfo->isEmpty()) {
        notification.userInfo = userInfo;
    }
    return notification;
}
