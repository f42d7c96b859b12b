// SPDX-License-Identifier: MIT
#include "KeyedArchive.h"

#include <platform/plist/PropertyList.h>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace KeyedArchive {

namespace {

using PropertyList::Array;
using PropertyList::ArrayPointer;
using PropertyList::Dictionary;
using PropertyList::DictionaryPointer;
using PropertyList::Uid;
using PropertyList::Value;

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

Value classDescription(const QString& name)
{
    return Dictionary::create({
        {u"$classname"_s, name},
        {u"$classes"_s, Array::create({name, u"NSObject"_s})},
    });
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

} // namespace KeyedArchive
