#include "parseNSStringStamp4strftime.h"

#include <QDateTime>
#include <QLocale>

#include <CalendarFormat.h>
#include <Preferences.h>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype stampLength = 5;

struct Stamp
{
    char16_t code;
    /// A calendar format, or the user-defaults key that holds one.
    QLatin1StringView text;
    bool isUserFormat = false;
};

constexpr auto stamps = std::to_array<Stamp>(
    {{u'0', "NSShortDateFormatString"_L1, true}, {u'1', "NSDateFormatString"_L1, true}, {u'2', "%a, %b %e, %Y"_L1},
        {u'3', "%H:%M"_L1}, {u'4', "NSTimeFormatString"_L1, true}, {u'5', "%Y%m%d"_L1}, {u'6', "%Y-%m-%d"_L1},
        {u'7', "%B %e, %Y"_L1}, {u'8', "%b %e, %Y"_L1}, {u'9', "%y%m%d"_L1}, {u':', "%y-%m-%d"_L1}});

/// The names and formats of the session's language, taken apart once: asking Qt for them costs more than a whole text.
const CalendarFormat::Locale& sessionLocale()
{
    static QLocale known = QLocale::c();
    static CalendarFormat::Locale names = CalendarFormat::Locale::fromLocale(known);

    if (const QLocale current; current != known) {
        known = current;
        names = CalendarFormat::Locale::fromLocale(current);
    }
    return names;
}

QString userFormat(const QString& key)
{
    const QString format = UserDefaults::standardUserDefaults().objectForKey(key).string();
    if (!format.isEmpty()) {
        return format;
    }
    const CalendarFormat::Locale& locale = sessionLocale();
    return key == u"NSTimeFormatString"   ? locale.timeFormat
           : key == u"NSDateFormatString" ? locale.dateFormat
                                          : locale.shortDateFormat;
}

/// Where a stamp begins at or after @p from; -1 where none does.
qsizetype nextStamp(QStringView text, char16_t code, qsizetype from)
{
    for (qsizetype at = text.indexOf(u'[', from); at >= 0 && at <= text.size() - stampLength;
         at = text.indexOf(u'[', at + 1)) {
        if (text[at + 1] == u'[' && text[at + 2] == code && text[at + 3] == u']' && text[at + 4] == u']') {
            return at;
        }
    }
    return -1;
}

void replaceStamp(QString& text, const Stamp& stamp)
{
    qsizetype at = nextStamp(text, stamp.code, 0);
    if (at < 0) {
        return;
    }
    const QString format = stamp.isUserFormat ? userFormat(stamp.text) : QString(stamp.text);
    for (; at >= 0; at = nextStamp(text, stamp.code, at + format.size())) {
        text.replace(at, stampLength, format);
    }
}

/// Whether the formats that the locale names (`%x`, `%X`, `%c`) are wanted: only then are the user's own looked up.
bool namesLocaleFormats(QStringView format)
{
    const QStringView widths = u".0123456789";
    for (qsizetype at = format.indexOf(u'%'); at >= 0; at = format.indexOf(u'%', at)) {
        do {
            ++at;
        } while (at < format.size() && widths.contains(format[at]));
        if (at < format.size() && (format[at] == u'x' || format[at] == u'X' || format[at] == u'c')) {
            return true;
        }
        at = std::min(at + 1, format.size());
    }
    return false;
}

} // namespace

void parseNSStringStamp4strftime(QString& text)
{
    parseNSStringStamp4strftime(text, QDateTime::currentDateTime());
}

void parseNSStringStamp4strftime(QString& text, const QDateTime& moment)
{
    if (text.contains(u'[')) {
        for (const Stamp& stamp : stamps) {
            replaceStamp(text, stamp);
        }
    }
    if (text.contains(u'%')) {
        text = descriptionWithCalendarFormat(text, moment);
    }
}

QString descriptionWithCalendarFormat(const QString& format, const QDateTime& moment)
{
    if (!namesLocaleFormats(format)) {
        return CalendarFormat::formatted(format, moment, sessionLocale());
    }
    CalendarFormat::Locale locale = sessionLocale();
    locale.shortDateFormat = userFormat(u"NSShortDateFormatString"_s);
    locale.timeFormat = userFormat(u"NSTimeFormatString"_s);
    return CalendarFormat::formatted(format, moment, locale);
}
