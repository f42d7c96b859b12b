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

/// Nothing that is listened to has more; nor has what cannot be read to its end.
constexpr size_t mostArguments = 16;
constexpr size_t mostElements = 4096;
constexpr int deepest = 8;

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

/// Leaves an array, past the elements that are too many.
void leave(sd_bus_message* message)
{
    while (sd_bus_message_at_end(message, 0) == 0 && sd_bus_message_skip(message, nullptr) > 0) {
    }
    sd_bus_message_exit_container(message);
}

/// Null, and not a step further, where the message is broken; each loop over elements has an end of its own.
Value readAny(sd_bus_message* message, int depth);

bool isText(char type)
{
    return type == SD_BUS_TYPE_STRING || type == SD_BUS_TYPE_OBJECT_PATH || type == SD_BUS_TYPE_SIGNATURE;
}

/// @p contents is that of the array: the type of an entry, in braces.
Value readDictionary(sd_bus_message* message, const QByteArray& contents, int depth)
{
    if (sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, contents.constData()) <= 0) {
        return {};
    }
    std::vector<Dictionary::Entry> entries;
    const QByteArray entry = contents.mid(1, contents.size() - 2);
    while (entries.size() < mostElements &&
           sd_bus_message_enter_container(message, SD_BUS_TYPE_DICT_ENTRY, entry.constData()) > 0) {
        const QString key = readAny(message, depth).string();
        entries.push_back({key, readAny(message, depth)});
        sd_bus_message_exit_container(message);
    }
    leave(message);
    std::erase_if(entries, [](const Dictionary::Entry& read) { return read.value.isNull(); });
    return Dictionary::create(std::move(entries));
}

Value readArray(sd_bus_message* message, const QByteArray& contents, int depth)
{
    if (sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, contents.constData()) <= 0) {
        return {};
    }
    std::vector<Value> items;
    while (items.size() < mostElements && sd_bus_message_at_end(message, 0) == 0) {
        items.push_back(readAny(message, depth));
    }
    leave(message);
    std::erase_if(items, [](const Value& item) { return item.isNull(); });
    return PropertyList::Array::create(std::move(items));
}

Value readVariant(sd_bus_message* message, const QByteArray& contents, int depth)
{
    if (sd_bus_message_enter_container(message, SD_BUS_TYPE_VARIANT, contents.constData()) <= 0) {
        return {};
    }
    Value value = readAny(message, depth);
    sd_bus_message_exit_container(message);
    return value;
}

Value readContainer(sd_bus_message* message, char type, const QByteArray& contents, int depth)
{
    if (type == SD_BUS_TYPE_VARIANT) {
        return readVariant(message, contents, depth);
    }
    if (contents == "y") {
        return readData(message);
    }
    return contents.startsWith(SD_BUS_TYPE_DICT_ENTRY_BEGIN) ? readDictionary(message, contents, depth)
                                                             : readArray(message, contents, depth);
}

/// @p depth: how many containers may still be entered.
Value readAny(sd_bus_message* message, int depth)
{
    using Reader = Value (*)(sd_bus_message*, char);
    static constexpr std::array<std::pair<char, Reader>, 12> readers{{
        {SD_BUS_TYPE_STRING, readText},
        {SD_BUS_TYPE_OBJECT_PATH, readText},
        {SD_BUS_TYPE_SIGNATURE, readText},
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
    // The library overwrites it at the next look.
    const QByteArray inner(contents);
    const bool isReadable =
        type == SD_BUS_TYPE_VARIANT ||
        (type == SD_BUS_TYPE_ARRAY && (!inner.startsWith(SD_BUS_TYPE_DICT_ENTRY_BEGIN) || isText(inner[1])));
    if (isReadable && depth > 0) {
        return readContainer(message, type, inner, depth - 1);
    }
    sd_bus_message_skip(message, nullptr);
    return {};
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

bool BusValues::append(sd_bus_message* message, const Value& value, char type)
{
    if (value.type() == Type::Integer && (type == SD_BUS_TYPE_INT32 || type == SD_BUS_TYPE_UINT32)) {
        const auto number = uint32_t(value.integerValue());
        return sd_bus_message_append_basic(message, type, &number) >= 0;
    }
    return append(message, value);
}

Value BusValues::read(sd_bus_message* message)
{
    return readAny(message, deepest);
}

std::vector<Value> BusValues::readAll(sd_bus_message* message)
{
    std::vector<Value> arguments;
    sd_bus_message_rewind(message, 1);
    while (arguments.size() < mostArguments && sd_bus_message_at_end(message, 1) == 0) {
        arguments.push_back(read(message));
    }
    return arguments;
}
