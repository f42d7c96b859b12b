// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringView>

#include <array>
#include <functional>

class QDateTime;
class QLocale;

/// Dates and times written by a calendar format: a text with conversions of a percent sign, an optional width and a
/// letter.
///
/// `%%` percent sign, `%a %A` weekday, `%b %B` month, `%d` day with two digits, `%e` day without leading zero or blank,
/// `%F` milliseconds, `%H` and `%I` hour of 24 and 12, `%j` day of the year, `%m` month, `%M` minute, `%p` morning or
/// afternoon,
/// `%S` second, `%w` weekday number (Sunday 0), `%x %X` the locale's date and time, `%c` both (time first), `%y %Y`
/// year,
/// `%Z` the zone's name, `%z` its offset. A width (`%1m`, also written `%.1m`) is the least number of digits, so that 1
/// leaves out leading zeros; it means nothing for texts. A percent sign that begins no conversion stands for itself.
namespace CalendarFormat {

/// The formats that a locale has of its own: `%x`, a date with weekday and month in words, and `%X`.
enum class LocaleFormat { ShortDate, Date, Time };

/// What a language and its user's settings give to a format.
struct Locale
{
    /// Sunday first.
    std::array<QString, 7> weekdays;
    std::array<QString, 7> shortWeekdays;
    std::array<QString, 12> months;
    std::array<QString, 12> shortMonths;
    QString morning;
    QString afternoon;
    /// Answers the calendar formats of this locale; asked only for those that are named.
    std::function<QString(LocaleFormat)> format;

    /// Names and formats of a language and country.
    static Locale fromLocale(const QLocale& locale);
};

/// @p moment by @p format, in the moment's own time zone.
QString formatted(QStringView format, const QDateTime& moment, const Locale& locale);

/// The calendar format of a format in Qt's notation ("dd.MM.yyyy"). Time zones are left out, with the brackets around
/// them; periods of the day ("B", in the evening) become morning and afternoon.
QString fromQtFormat(QStringView format);

} // namespace CalendarFormat
