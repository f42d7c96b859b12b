// SPDX-License-Identifier: MIT
#include "KeyedArchive.h"

#include <platform/plist/PropertyList.h>

#include <algorithm>
#include <limits>
#include <vector>

using namespace Qt::StringLiterals;

namespace KeyedArchive {

namespace {

using PropertyList::Array;
using PropertyList::ArrayPointer;
using PropertyList::Dictionary;
using PropertyList::DictionaryPointer;
using PropertyList::Type;
using PropertyList::Uid;
using PropertyList::Value;

constexpr quint64 largestMember = std::numeric_limits<int>::max();
constexpr quint64 mostMembers = 1'000'000;

struct Range
{
    quint64 location = 0;
    quint64 length = 0;
};

std::vector<Range> rangesOf(QList<int> rows)
{
    std::ranges::sort(rows);
    std::vector<Range> ranges;
    for (const int row : rows) {
        if (row < 0) {
            continue;
        }
        const auto member = quint64(row);
        const quint64 end = ranges.empty() ? 0 : ranges.back().location + ranges.back().length;
        if (ranges.empty() || member > end) {
            ranges.push_back({member, 1});
        } else if (member == end) {
            ++ranges.back().length;
        }
    }
    return ranges;
}

/// Base 128, the lowest seven bits first, the high bit set on all bytes but the last.
void appendNumber(QByteArray& bytes, quint64 number)
{
    for (; number >= 0x80; number >>= 7) {
        bytes.append(char(0x80 | (number & 0x7F)));
    }
    bytes.append(char(number));
}

std::optional<quint64> takeNumber(QByteArrayView& bytes)
{
    constexpr qsizetype longest = 9;
    quint64 number = 0;
    for (qsizetype i = 0; i < std::min(bytes.size(), longest); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        number |= quint64(byte & 0x7F) << (7 * i);
        if ((byte & 0x80) == 0) {
            bytes = bytes.sliced(i + 1);
            return number;
        }
    }
    return std::nullopt;
}

Value classDescription(const QString& name)
{
    return Dictionary::create({
        {u"$classname"_s, name},
        {u"$classes"_s, Array::create({name, u"NSObject"_s})},
    });
}

/// Follows references between the objects of one archive.
class Objects final
{
public:
    explicit Objects(ArrayPointer objects)
        : m_objects(std::move(objects))
    {
    }

    /// What @p value refers to; itself when it is no reference; a null Value for a reference to nothing.
    Value resolved(const Value& value) const
    {
        const std::optional<Uid> reference = value.uid();
        if (!reference) {
            return value;
        }
        return reference->index < quint64(m_objects->size()) ? m_objects->at(qsizetype(reference->index)) : Value();
    }

    Value resolved(const DictionaryPointer& object, QStringView key) const { return resolved(object->value(key)); }

private:
    ArrayPointer m_objects;
};

bool isIndexSet(const Objects& objects, const DictionaryPointer& object)
{
    const DictionaryPointer description = objects.resolved(object, u"$class").dictionary();
    const QString name = description ? description->value(u"$classname").string() : QString();
    return name == u"NSIndexSet" || name == u"NSMutableIndexSet";
}

std::optional<std::vector<Range>> rangesFrom(QByteArrayView bytes)
{
    std::vector<Range> ranges;
    while (!bytes.isEmpty()) {
        const std::optional<quint64> location = takeNumber(bytes);
        const std::optional<quint64> length = location ? takeNumber(bytes) : std::nullopt;
        if (!length) {
            return std::nullopt;
        }
        ranges.push_back({*location, *length});
    }
    return ranges;
}

std::optional<std::vector<Range>> rangesOf(const Objects& objects, const DictionaryPointer& object)
{
    Value data = objects.resolved(object, u"NSRangeData");
    if (const DictionaryPointer wrapped = data.dictionary()) {
        data = objects.resolved(wrapped, u"NS.data");
    }
    if (data.type() == Type::Data) {
        return rangesFrom(data.data());
    }
    const Value location = object->value(u"NSLocation");
    if (location.type() == Type::Integer) {
        return std::vector{Range{location.unsignedIntegerValue(), object->value(u"NSLength").unsignedIntegerValue()}};
    }
    const Value count = object->value(u"NSRangeCount");
    if (count.type() == Type::Integer && count.integerValue() == 0) {
        return std::vector<Range>();
    }
    return std::nullopt;
}

std::optional<QList<int>> membersOf(const std::vector<Range>& ranges)
{
    QList<int> members;
    quint64 end = 0;
    for (const auto& [location, length] : ranges) {
        const quint64 room = mostMembers - quint64(members.size());
        if (location < end || location > largestMember || length < 1 || length > room ||
            length - 1 > largestMember - location) {
            return std::nullopt;
        }
        end = location + length;
        for (quint64 member = location; member != end; ++member) {
            members.append(int(member));
        }
    }
    return members;
}

Value topObject(const Objects& objects, const DictionaryPointer& top)
{
    if (top->size() == 1) {
        return objects.resolved(top->begin()->value);
    }
    return objects.resolved(top, u"root");
}

} // namespace

QByteArray archivedIndexSet(const QList<int>& rows)
{
    const std::vector<Range> ranges = rangesOf(rows);
    const DictionaryPointer set = Dictionary::create();
    const ArrayPointer objects = Array::create({u"$null"_s, set, classDescription(u"NSIndexSet"_s)});
    set->insert(u"$class"_s, Uid{2});
    set->insert(u"NSRangeCount"_s, quint64(ranges.size()));
    if (ranges.size() == 1) {
        set->insert(u"NSLocation"_s, ranges.front().location);
        set->insert(u"NSLength"_s, ranges.front().length);
    } else if (ranges.size() > 1) {
        QByteArray data;
        for (const Range& range : ranges) {
            appendNumber(data, range.location);
            appendNumber(data, range.length);
        }
        set->insert(u"NSRangeData"_s, Uid{3});
        objects->append(Dictionary::create({{u"$class"_s, Uid{4}}, {u"NS.data"_s, data}}));
        objects->append(classDescription(u"NSData"_s));
    }
    return PropertyList::writeBinary(Dictionary::create({
        {u"$archiver"_s, u"NSKeyedArchiver"_s},
        {u"$objects"_s, objects},
        {u"$top"_s, Dictionary::create({{u"root"_s, Uid{1}}})},
        {u"$version"_s, 100000},
    }));
}

std::optional<QList<int>> unarchivedIndexSet(QByteArrayView bytes)
{
    const DictionaryPointer root = PropertyList::read(bytes).root.dictionary();
    if (!root || root->value(u"$archiver").string() != u"NSKeyedArchiver") {
        return std::nullopt;
    }
    const DictionaryPointer top = root->value(u"$top").dictionary();
    const ArrayPointer list = root->value(u"$objects").array();
    if (!top || !list) {
        return std::nullopt;
    }
    const Objects objects(list);
    const DictionaryPointer set = topObject(objects, top).dictionary();
    if (!set || !isIndexSet(objects, set)) {
        return std::nullopt;
    }
    const std::optional<std::vector<Range>> ranges = rangesOf(objects, set);
    return ranges ? membersOf(*ranges) : std::nullopt;
}

} // namespace KeyedArchive
