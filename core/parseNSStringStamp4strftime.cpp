// SPDX-License-Identifier: MIT
#include "parseNSStringStamp4strftime.h"

#include <platform/bytes/CalendarFormat.h>
#include <platform/storage/Preferences.h>

#include <QDateTime>
#include <QLocale>

#include <array>
#include <bitset>
#include <variant>

using namespace Qt::StringLiterals;

namespace {

using CalendarFormat::LocaleFormat;

constexpr qsizetype stampLength = 5;

/// What a stamp stands for: a calendar format, or one of the user's own.
struct Stamp
{
    char16_t code;
    std::variant<QStringView, LocaleFormat> format;
};

constexpr std::array<Stamp, 11> stamps{{{u'0', LocaleFormat::ShortDate}, {u'1', LocaleFormat::Date},
    {u'2', u"%a, %b %e, %Y"}, {u'3', u"%H:%M"}, {u'4', LocaleFormat::Time}, {u'5', u"%Y%m%d"}, {u'6', u"%Y-%m-%d"},
    {u'7', u"%B %e, %Y"}, {u'8', u"%b %e, %Y"}, {u'9', u"%y%m%d"}, {u':', u"%y-%m-%d"}}};

using StampSet = std::bitset<stamps.size()>;

// "[[0]]", "[[1]]" and "[[4]]".
constexpr StampSet usersStamps = 0b10011;

// In the order of LocaleFormat.
constexpr std::array userKeys{"NSShortDateFormatString"_L1, "NSDateFormatString"_L1, "NSTimeFormatString"_L1};

CalendarFormat::Locale localeWithUserFormats(const QLocale& locale)
{
    auto names = CalendarFormat::Locale::fromLocale(locale);
    names.format = [own = names.format](LocaleFormat kind) {
        const QString format = UserDefaults::objectForKeyOutsideSuites(userKeys[size_t(kind)]).string();
        return format.isEmpty() ? own(kind) : format;
    };
    return names;
}

/// The names and formats of the session's language, taken apart once: asking Qt for them costs more than a whole text.
const CalendarFormat::Locale& sessionLocale()
{
    static QLocale known = QLocale::c();
    static CalendarFormat::Locale names = localeWithUserFormats(known);

    if (const QLocale current; current != known) {
        known = current;
        names = localeWithUserFormats(current);
    }
    return names;
}

/// Calls @p found (position, index of the stamp) for every stamp in @p text.
template <typename Function>
void forEachStamp(QStringView text, Function&& found)
{
    for (qsizetype at = text.indexOf(u'['); at >= 0; at = text.indexOf(u'[', at)) {
        const QStringView rest = text.sliced(at);
        const bool isStamp = rest.size() >= stampLength && rest[1] == u'[' && rest[3] == u']' && rest[4] == u']' &&
                             rest[2] >= stamps.front().code && rest[2] <= stamps.back().code;
        if (isStamp) {
            found(at, size_t(rest[2].unicode() - stamps.front().code));
        }
        at += isStamp ? stampLength : 1;
    }
}

StampSet stampsIn(QStringView text)
{
    StampSet all;
    forEachStamp(text, [&all](qsizetype, size_t stamp) { all.set(stamp); });
    return all;
}

QString withStampsReplaced(QStringView text, StampSet replaced)
{
    QString result;
    result.reserve(text.size() + 64);
    qsizetype done = 0;
    forEachStamp(text, [&](qsizetype at, size_t stamp) {
        if (!replaced[stamp]) {
            return;
        }
        result += text.sliced(done, at - done);
        const auto& format = stamps[stamp].format;
        if (const auto* ours = std::get_if<QStringView>(&format)) {
            result += *ours;
        } else {
            result += sessionLocale().format(std::get<LocaleFormat>(format));
        }
        done = at + stampLength;
    });
    result += text.sliced(done);
    return result;
}

/// Replaces one kind of stamp after the other. A format of the user's may hold stamps, or complete them with the
/// brackets around it; ours cannot, so that without the user's all are replaced at once.
void replaceStamps(QString& text)
{
    const StampSet found = stampsIn(text);
    if ((found & usersStamps).any()) {
        for (size_t stamp = 0; stamp < stamps.size(); ++stamp) {
            text = withStampsReplaced(text, StampSet().set(stamp));
        }
    } else if (found.any()) {
        text = withStampsReplaced(text, found);
    }
}

} // namespace

void parseNSStringStamp4strftime(QString& text)
{
    parseNSStringStamp4strftime(text, QDateTime::currentDateTime());
}

void parseNSStringStamp4strftime(QString& text, const QDateTime& moment)
{
    replaceStamps(text);
    if (text.contains(u'%')) {
        text = descriptionWithCalendarFormat(text, moment);
    }
}

QString descriptionWithCalendarFormat(const QString& format, const QDateTime& moment)
{
    return CalendarFormat::formatted(format, moment, sessionLocale());
}
