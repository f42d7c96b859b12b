// SPDX-License-Identifier: MIT
#include <platform/bytes/CalendarFormat.h>

#include <QDateTime>
#include <QLocale>
#include <QTest>

#include <DataTable.h>

using namespace Qt::StringLiterals;

class CalendarFormatTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void formats_data()
    {
        const DataTable<QString, QString, QString> row("locale", "format", "expected");
        row("numbers", u"en_US"_s, u"%Y-%m-%d %H:%M:%S %F %y %j %w"_s, u"2009-03-05 14:07:09 042 09 064 4"_s);
        row("day without blank", u"en_US"_s, u"%e|%1e|%d|%1d"_s, u"5|5|05|5"_s);
        row("widths", u"en_US"_s, u"%1m/%e/%y %1I:%M %p %.1d %3d"_s, u"3/5/09 2:07 PM 5 005"_s);
        row("names", u"en_US"_s, u"%a %A %b %B"_s, u"Thu Thursday Mar March"_s);
        row("names of another language", u"de_DE"_s, u"%A, %e. %B"_s, u"Donnerstag, 5. März"_s);
        row("locale's own formats", u"en_US"_s, u"%x %X|%c"_s, u"3/5/09 2:07:09 PM|2:07:09 PM 3/5/09"_s);
        row("percent signs", u"en_US"_s, u"100%% %| %< %-"_s, u"100% %| %< %-"_s);
        row("percent sign at the end", u"en_US"_s, u"%Y%"_s, u"2009%"_s);
        row("width without a letter", u"en_US"_s, u"%12"_s, u"%12"_s);
        row("text only", u"en_US"_s, u"Grüße \U0001F600"_s, u"Grüße \U0001F600"_s);
    }

    void formats()
    {
        const auto [locale, format] = currentRow<QString, QString>();

        const QDateTime moment(QDate(2009, 3, 5), QTime(14, 7, 9, 42), Qt::UTC);
        const auto names = CalendarFormat::Locale::fromLocale(QLocale(locale));
        QTEST(CalendarFormat::formatted(format, moment, names), "expected");
    }

    void zoneIsTheMomentsOwn()
    {
        const QDateTime moment(QDate(2009, 3, 5), QTime(0, 7), Qt::OffsetFromUTC, -(3 * 60 + 30) * 60);
        const auto names = CalendarFormat::Locale::fromLocale(QLocale::c());
        QCOMPARE(CalendarFormat::formatted(u"%d %I %z", moment, names), u"05 12 -0330"_s);
    }

    void translatesTheFormatsOfALocale_data()
    {
        const DataTable<QString, QString> row("format", "expected");

        row("US date", u"M/d/yy"_s, u"%1m/%e/%y"_s);
        row("US time", u"h:mm:ss AP t"_s, u"%1I:%M:%S %p"_s);
        row("zone in brackets", u"H:mm:ss (t)"_s, u"%1H:%M:%S"_s);
        row("zone in square brackets", u"Bh:mm:ss [tttt]"_s, u"%p%1I:%M:%S"_s);
        row("zone behind a comma", u"h:mm:ss AP, t"_s, u"%1I:%M:%S %p"_s);
        row("zone in front", u"t HH:mm"_s, u"%H:%M"_s);
        row("all hours", u"HH:mm"_s, u"%H:%M"_s);
        row("words", u"dddd, d. MMMM yyyy"_s, u"%A, %e. %B %Y"_s);
        row("quoted", u"d 'de' MMM, h 'a' ''"_s, u"%e de %b, %1H a '"_s);
        row("percent sign", u"%d '50%'"_s, u"%%%e 50%%"_s);
        row("Japanese", u"yyyy年M月d日"_s, u"%Y年%1m月%e日"_s);
    }

    void translatesTheFormatsOfALocale()
    {
        QFETCH(QString, format);

        QTEST(CalendarFormat::fromQtFormat(format), "expected");
    }

    void localeThatNamesItselfEnds()
    {
        auto names = CalendarFormat::Locale::fromLocale(QLocale::c());
        names.format = [](CalendarFormat::LocaleFormat) { return u"%x%x"_s; };
        QVERIFY(CalendarFormat::formatted(u"%x", QDateTime::currentDateTime(), names).size() < 100);
    }
};

QTEST_GUILESS_MAIN(CalendarFormatTest)
#include "CalendarFormatTest.moc"
