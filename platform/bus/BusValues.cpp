// SPDX-License-Identifier: MIT
#include "BusValues.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <array>
#include <utility>

using PropertyList::Dictionary;
using PropertyList::Type;
using PropertyList::Value;

namespace {

const char* signatureOf(const Value& value)
{
    // In the order of Type.
    static constexpr std::array signatures{"", "b", "x", "d", "s", "", "ay", "", "as", "a{sv}"};
    return signatures[size_t(value.type())];
}

bool open(sd_bus_message* message, char type, const char* contents)
{
    return sd_bus_message_open_container(message, type, contents) >= 0;
}

bool close(sd_bus_message* message)
{
    return sd_bus_message_close_container(message) >= 0;
}

bool appendEntry(sd_bus_message* message, const Dictionary::Entry& entry)
{
    return open(message, SD_BUS_TYPE_DICT_ENTRY, "sv") && BusValues::append(message, entry.key) &&
           open(message, SD_BUS_TYPE_VARIANT, signatureOf(entry.value)) && BusValues::append(message, entry.value) &&
           close(message) && close(message);
}

/// A number of the type that the message has it in; a boolean takes 32 bits.
template <typename Number, typename Held = qint64>
Value readNumber(sd_bus_message* message, char type)
{
    Number number = 0;
    return sd_bus_message_read_basic(message, type, &number) > 0 ? Value(Held(number)) : Value();
}

Value readText(sd_bus_message* message, char type)
{
    const char* text = nullptr;
    return sd_bus_message_read_basic(message, type, &text) > 0 ? Value(QString::fromUtf8(text)) : Value();
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

Value readDictionary(sd_bus_message* message)
{
    const PropertyList::DictionaryPointer dictionary = Dictionary::create();
    sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "{sv}");
    while (sd_bus_message_enter_container(message, SD_BUS_TYPE_DICT_ENTRY, "sv") > 0) {
        const QString key = BusValues::read(message).string();
        dictionary->insert(key, BusValues::read(message));
        sd_bus_message_exit_container(message);
    }
    sd_bus_message_exit_container(message);
    return dictionary;
}

Value readVariant(sd_bus_message* message, const char* contents)
{
    sd_bus_message_enter_container(message, SD_BUS_TYPE_VARIANT, contents);
    Value value = BusValues::read(message);
    sd_bus_message_exit_container(message);
    return value;
}

} // namespace

bool BusValues::append(sd_bus_message* message, const Value& value)
{
    switch (value.type()) {
    case Type::Boolean:
        return sd_bus_message_append(message, "b", int(value.integerValue())) >= 0;
    case Type::Integer:
        return sd_bus_message_append(message, "x", int64_t(value.integerValue())) >= 0;
    case Type::Real:
        return sd_bus_message_append(message, "d", value.doubleValue()) >= 0;
    case Type::String:
        return sd_bus_message_append(message, "s", value.string().toUtf8().constData()) >= 0;
    case Type::Data: {
        const QByteArray data = value.data();
        return sd_bus_message_append_array(message, 'y', data.constData(), size_t(data.size())) >= 0;
    }
    case Type::Array:
        return open(message, SD_BUS_TYPE_ARRAY, "s") &&
               std::ranges::all_of(*value.array(), [message](const Value& text) { return append(message, text); }) &&
               close(message);
    case Type::Dictionary:
        return open(message, SD_BUS_TYPE_ARRAY, "{sv}") &&
               std::ranges::all_of(*value.dictionary(),
                   [message](const Dictionary::Entry& entry) { return appendEntry(message, entry); }) &&
               close(message);
    default:
        return false;
    }
}

Value BusValues::read(sd_bus_message* message)
{
    using Reader = Value (*)(sd_bus_message*, char);
    static constexpr std::array<std::pair<char, Reader>, 11> readers{{
        {SD_BUS_TYPE_STRING, readText},
        {SD_BUS_TYPE_OBJECT_PATH, readText},
        {SD_BUS_TYPE_BOOLEAN, readNumber<int, bool>},
        {SD_BUS_TYPE_BYTE, readNumber<uint8_t>},
        {SD_BUS_TYPE_INT16, readNumber<int16_t>},
        {SD_BUS_TYPE_UINT16, readNumber<uint16_t>},
        {SD_BUS_TYPE_INT32, readNumber<int32_t>},
        {SD_BUS_TYPE_UINT32, readNumber<uint32_t>},
        {SD_BUS_TYPE_INT64, readNumber<int64_t>},
        {SD_BUS_TYPE_UINT64, readNumber<uint64_t, quint64>},
        {SD_BUS_TYPE_DOUBLE, readNumber<double, double>},
    }};
    char type = 0;
    const char* contents = nullptr;
    if (sd_bus_message_peek_type(message, &type, &contents) <= 0) {
        return {};
    }
    const auto* const reader = std::ranges::find(readers, type, &std::pair<char, Reader>::first);
    if (reader != readers.end()) {
        return reader->second(message, type);
    }
    if (type == SD_BUS_TYPE_VARIANT) {
        return readVariant(message, contents);
    }
    if (type == SD_BUS_TYPE_ARRAY && qstrcmp(contents, "y") == 0) {
        return readData(message);
    }
    if (type == SD_BUS_TYPE_ARRAY && qstrcmp(contents, "{sv}") == 0) {
        return readDictionary(message);
    }
    sd_bus_message_skip(message, nullptr);
    return {};
}
