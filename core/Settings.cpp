// SPDX-License-Identifier: MIT
#include "Settings.h"

#include "Changes.h"

#include <platform/storage/Preferences.h>

#include <concepts>
#include <utility>

using PropertyList::Type;
using PropertyList::Value;

namespace {

using Texts = std::optional<QStringList>;
using Bytes = std::optional<QByteArray>;

Texts textsOf(const Value& value)
{
    const PropertyList::ArrayPointer array = value.array();
    if (!array) {
        return std::nullopt;
    }
    QStringList texts;
    for (const Value& item : std::as_const(*array)) {
        if (item.type() == Type::String) {
            texts.append(item.string());
        }
    }
    return texts;
}

template <typename T>
T converted(const Value& value)
{
    if constexpr (std::same_as<T, int>) {
        return value.intValue();
    } else if constexpr (std::same_as<T, bool>) {
        return value.integerValue() != 0;
    } else if constexpr (std::same_as<T, QString>) {
        return value.textValue();
    } else if constexpr (std::same_as<T, Texts>) {
        return textsOf(value);
    } else if constexpr (std::same_as<T, Bytes>) {
        return value.type() == Type::Data ? Bytes(value.data()) : std::nullopt;
    } else if constexpr (std::same_as<T, PropertyList::DictionaryPointer>) {
        return value.dictionary();
    } else {
        return value;
    }
}

/// Numbers and switches are stored as decimal text.
Value asValue(int number)
{
    return QString::number(number);
}

Value asValue(bool isOn)
{
    return asValue(int(isOn));
}

Value asValue(const Texts& texts)
{
    if (!texts) {
        return {};
    }
    return PropertyList::Array::create(std::vector<Value>(texts->cbegin(), texts->cend()));
}

Value asValue(const Bytes& bytes)
{
    return bytes ? Value(*bytes) : Value();
}

template <typename T>
Value asValue(const T& value)
{
    return value;
}

} // namespace

template <typename T>
T Setting<T>::value() const
{
    const Value found = Settings::stored(key);
    const bool isEmptyText = found.type() == Type::String && found.stringView().isEmpty();
    return found.isNull() || isEmptyText ? whenAbsent : converted<T>(found);
}

template <typename T>
void Setting<T>::set(const T& value) const
{
    Preferences::setValue(key, asValue(value), helperIdentifier);
}

template <typename T>
void Setting<T>::store(const T& value) const
{
    set(value);
    Changes::saveSettings({});
}

template <typename T>
void Setting<T>::publish(const T& value) const
{
    set(value);
    Changes::saveSettings({NotificationName::preferencesChanged});
}

template struct Setting<int>;
template struct Setting<bool>;
template struct Setting<QString>;
template struct Setting<Texts>;
template struct Setting<Bytes>;
template struct Setting<PropertyList::DictionaryPointer>;
template struct Setting<Value>;

Value Settings::stored(const QString& key)
{
    UserDefaults& defaults = UserDefaults::standardUserDefaults();
    defaults.addSuiteNamed(helperIdentifier);
    defaults.synchronize();
    return defaults.objectForKey(key);
}
