// SPDX-License-Identifier: MIT
#include "CalendarFormat.h"

#include <QDateTime>
#include <QLocale>
#include <QTimeZone>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>
#include <span>

using namespace Qt::StringLiterals;

namespace CalendarFormat {

namespace {

// Formats may name each other (%c, %x); a locale whose own format names itself must end somewhere.
constexpr int maximumDepth = 3;
// No field of a date has more digits than a person would ask for; the notation has one digit, a hostile text more.
constexpr int maximumWidth = 20;

/// One conversion as it stands in a format.
struct Conversion
{
    char16_t letter = 0;
    /// 0 where none is given.
    int width = 0;
    qsizetype length = 0;
};

/// The conversion that begins at the percent sign in front; without a letter where there is none.
Conversion conversionAt(QStringView format)
{
    qsizetype position = 1;
    if (position < format.size() && format[position] == u'.') {
        ++position;
    }
    int width = 0;
    for (; position < format.size() && format[position] >= u'0' && format[position] <= u'9'; ++position) {
        width = std::min(width * 10 + (format[position].unicode() - u'0'), maximumWidth);
    }
    const char16_t letter = position < format.size() ? format[position].unicode() : char16_t(0);
    return {letter, width, std::min(position + 1, format.size())};
}

void appendNumber(QString& text, int number, int digits)
{
    std::array<char16_t, maximumWidth + 1> written;
    char16_t* const end = written.data() + written.size();
    char16_t* at = end;
    for (int rest = std::abs(number); rest > 0 || end - at < digits; rest /= 10) {
        *--at = char16_t(u'0' + rest % 10);
    }
    if (number < 0) {
        *--at = u'-';
    }
    text += QStringView(at, end);
}

/// A moment, taken apart once for a whole text.
struct Moment
{
    explicit Moment(const QDateTime& from)
        : moment(from)
        , date(from.date())
        , time(from.time())
    {
        date.getDate(&year, &month, &day);
    }

    const QDateTime& moment;
    QDate date;
    QTime time;
    int year = 0;
    int month = 0;
    int day = 0;
};

/// A conversion that stands for a number.
struct Field
{
    char16_t letter;
    /// The least number of digits where the format gives none.
    int digits;
    int (*value)(const Moment& moment);
};

constexpr auto fields = std::to_array<Field>({
    {u'd', 2, [](const Moment& moment) { return moment.day; }},
    {u'e', 1, [](const Moment& moment) { return moment.day; }},
    {u'F', 3, [](const Moment& moment) { return moment.time.msec(); }},
    {u'H', 2, [](const Moment& moment) { return moment.time.hour(); }},
    {u'I', 2, [](const Moment& moment) { return (moment.time.hour() + 11) % 12 + 1; }},
    {u'j', 3, [](const Moment& moment) { return moment.date.dayOfYear(); }},
    {u'm', 2, [](const Moment& moment) { return moment.month; }},
    {u'M', 2, [](const Moment& moment) { return moment.time.minute(); }},
    {u'S', 2, [](const Moment& moment) { return moment.time.second(); }},
    {u'w', 1, [](const Moment& moment) { return moment.date.dayOfWeek() % 7; }},
    {u'y', 2, [](const Moment& moment) { return std::abs(moment.year) % 100; }},
    {u'Y', 1, [](const Moment& moment) { return moment.year; }},
});

/// Writes one moment.
class Formatter final
{
public:
    Formatter(const QDateTime& moment, const Locale& locale)
        : m_moment(moment)
        , m_locale(locale)
    {
    }

    void append(QString& text, QStringView format, int depth) const
    {
        qsizetype position = 0;
        while (position < format.size()) {
            const qsizetype percent = format.indexOf(u'%', position);
            if (percent < 0) {
                break;
            }
            text += format.sliced(position, percent - position);
            const Conversion conversion = conversionAt(format.sliced(percent));
            if (!appendConversion(text, conversion, depth)) {
                text += format.sliced(percent, conversion.length);
            }
            position = percent + conversion.length;
        }
        text += format.sliced(position);
    }

private:
    bool appendConversion(QString& text, const Conversion& conversion, int depth) const
    {
        const auto* const field = std::ranges::find(fields, conversion.letter, &Field::letter);
        if (field != fields.end()) {
            appendNumber(text, field->value(m_moment), conversion.width > 0 ? conversion.width : field->digits);
            return true;
        }
        if (const std::optional<QString> words = wordsOf(conversion.letter)) {
            text += *words;
            return true;
        }
        const std::optional<QString> format = depth < maximumDepth ? formatOf(conversion.letter) : std::nullopt;
        if (format) {
            append(text, *format, depth + 1);
        }
        return format.has_value();
    }

    std::optional<QString> wordsOf(char16_t letter) const
    {
        const auto weekday = size_t(m_moment.date.dayOfWeek() % 7);
        const auto month = size_t(std::clamp(m_moment.month, 1, 12) - 1);
        switch (letter) {
        case u'%':
            return u"%"_s;
        case u'a':
            return m_locale.shortWeekdays[weekday];
        case u'A':
            return m_locale.weekdays[weekday];
        case u'b':
            return m_locale.shortMonths[month];
        case u'B':
            return m_locale.months[month];
        case u'p':
            return m_moment.time.hour() < 12 ? m_locale.morning : m_locale.afternoon;
        case u'Z':
            return m_moment.moment.timeZoneAbbreviation();
        case u'z':
            return zoneOffset();
        default:
            return std::nullopt;
        }
    }

    QString zoneOffset() const
    {
        const int minutes = m_moment.moment.offsetFromUtc() / 60;
        QString offset(minutes < 0 ? u'-' : u'+');
        appendNumber(offset, std::abs(minutes) / 60 * 100 + std::abs(minutes) % 60, 4);
        return offset;
    }

    /// The format that a conversion stands for.
    std::optional<QString> formatOf(char16_t letter) const
    {
        switch (letter) {
        case u'c':
            return u"%X %x"_s;
        case u'x':
            return m_locale.format(LocaleFormat::ShortDate);
        case u'X':
            return m_locale.format(LocaleFormat::Time);
        default:
            return std::nullopt;
        }
    }

    Moment m_moment;
    const Locale& m_locale;
};

struct Translation
{
    QLatin1StringView field;
    QLatin1StringView conversion;
};

// Longer fields first: the first that fits is taken.
constexpr auto translations = std::to_array<Translation>(
    {{"dddd"_L1, "%A"_L1}, {"ddd"_L1, "%a"_L1}, {"dd"_L1, "%d"_L1}, {"d"_L1, "%e"_L1}, {"MMMM"_L1, "%B"_L1},
        {"MMM"_L1, "%b"_L1}, {"MM"_L1, "%m"_L1}, {"M"_L1, "%1m"_L1}, {"yyyy"_L1, "%Y"_L1}, {"yy"_L1, "%y"_L1},
        {"HH"_L1, "%H"_L1}, {"H"_L1, "%1H"_L1}, {"mm"_L1, "%M"_L1}, {"m"_L1, "%1M"_L1}, {"ss"_L1, "%S"_L1},
        {"s"_L1, "%1S"_L1}, {"zzz"_L1, "%F"_L1}, {"z"_L1, "%1F"_L1}, {"AP"_L1, "%p"_L1}, {"ap"_L1, "%p"_L1},
        {"Ap"_L1, "%p"_L1}, {"aP"_L1, "%p"_L1}, {"A"_L1, "%p"_L1}, {"a"_L1, "%p"_L1}, {"B"_L1, "%p"_L1}});
constexpr auto twelveHours = std::to_array<Translation>({{"hh"_L1, "%I"_L1}, {"h"_L1, "%1I"_L1}});
constexpr auto allHours = std::to_array<Translation>({{"hh"_L1, "%H"_L1}, {"h"_L1, "%1H"_L1}});

const Translation* translationAt(QStringView format, std::span<const Translation> table)
{
    const auto found =
        std::ranges::find_if(table, [format](const Translation& entry) { return format.startsWith(entry.field); });
    return found == table.end() ? nullptr : &*found;
}

/// Appends the quoted text that @p format begins with and answers its length, quotes included.
qsizetype appendQuoted(QString& text, QStringView format)
{
    if (format.startsWith(u"''")) {
        text += u'\'';
        return 2;
    }
    const qsizetype end = format.indexOf(u'\'', 1);
    const QStringView quoted = end < 0 ? format.sliced(1) : format.sliced(1, end - 1);
    text += quoted.toString().replace(u'%', u"%%"_s);
    return end < 0 ? format.size() : end + 1;
}

/// Takes back from @p text what led to the time zone that @p format begins with, which is left out: the bracket around
/// it, or the comma. Answers the length of the zone and of the bracket's partner behind it.
qsizetype skipZone(QString& text, QStringView format)
{
    qsizetype length = 0;
    while (length < format.size() && format[length] == u't') {
        ++length;
    }
    const QStringView after = format.sliced(length);
    if ((text.endsWith(u'(') && after.startsWith(u')')) || (text.endsWith(u'[') && after.startsWith(u']'))) {
        text.chop(1);
        ++length;
    }
    while (!text.isEmpty() && (text.back().isSpace() || text.back() == u',')) {
        text.chop(1);
    }
    return length;
}

bool usesTwelveHours(QStringView format)
{
    bool quoted = false;
    return std::ranges::any_of(format, [&quoted](QChar character) {
        quoted = quoted != (character == u'\'');
        return !quoted && (character == u'A' || character == u'a' || character == u'B');
    });
}

} // namespace

Locale Locale::fromLocale(const QLocale& locale)
{
    Locale result;
    for (int day = 0; day < 7; ++day) {
        // Qt counts the days from Monday (1) to Sunday (7).
        const int number = day == 0 ? 7 : day;
        result.weekdays[size_t(day)] = locale.dayName(number, QLocale::LongFormat);
        result.shortWeekdays[size_t(day)] = locale.dayName(number, QLocale::ShortFormat);
    }
    for (int month = 0; month < 12; ++month) {
        result.months[size_t(month)] = locale.monthName(month + 1, QLocale::LongFormat);
        result.shortMonths[size_t(month)] = locale.monthName(month + 1, QLocale::ShortFormat);
    }
    result.morning = locale.amText();
    result.afternoon = locale.pmText();
    // In the order of LocaleFormat.
    const std::array formats{fromQtFormat(locale.dateFormat(QLocale::ShortFormat)),
        fromQtFormat(locale.dateFormat(QLocale::LongFormat)), fromQtFormat(locale.timeFormat(QLocale::LongFormat))};
    result.format = [formats](LocaleFormat kind) { return formats[size_t(kind)]; };
    return result;
}

QString formatted(QStringView format, const QDateTime& moment, const Locale& locale)
{
    QString text;
    text.reserve(format.size() + 32);
    Formatter(moment, locale).append(text, format, 0);
    return text;
}

QString fromQtFormat(QStringView format)
{
    const std::span<const Translation> hours = usesTwelveHours(format) ? twelveHours : allHours;
    QString text;
    qsizetype position = 0;
    while (position < format.size()) {
        const QStringView rest = format.sliced(position);
        if (rest.front() == u'\'') {
            position += appendQuoted(text, rest);
            continue;
        }
        if (rest.front() == u't') {
            position += skipZone(text, rest);
            continue;
        }
        const Translation* known = translationAt(rest, translations);
        known = known == nullptr ? translationAt(rest, hours) : known;
        if (known != nullptr) {
            text += known->conversion;
            position += known->field.size();
        } else {
            text += rest.front() == u'%' ? u"%%"_s : QString(rest.front());
            ++position;
        }
    }
    return text.simplified();
}

} // namespace CalendarFormat
