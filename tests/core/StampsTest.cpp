// SPDX-License-Identifier: MIT
#include <core/parseNSStringStamp4strftime.h>
#include <platform/storage/Preferences.h>

#include <QTest>

using namespace Qt::StringLiterals;
using PropertyList::Value;

class StampsTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void fillsStamps_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");

        const auto row = [](const char* name, const QString& text, const QString& expected) {
            QTest::newRow(name) << text << expected;
        };
        row("ISO date", u"Meeting [[6]]"_s, u"Meeting 2009-03-05"_s);
        row("twice", u"[[3]] [[3]]"_s, u"14:07 14:07"_s);
        row("all of one language", u"[[2]]|[[5]]|[[7]]|[[8]]|[[9]]|[[:]]"_s,
            u"Thu, Mar 5, 2009|20090305|March 5, 2009|Mar 5, 2009|090305|09-03-05"_s);
        row("two digits are no stamp", u"[[10]] [[;]] [[6] ]"_s, u"[[10]] [[;]] [[6] ]"_s);
        row("stamp in brackets", u"[[[6]]]"_s, u"[2009-03-05]"_s);
        row("stamp that a stamp leaves", u"[[[[3]]]]"_s, u"[[14:07]]"_s);
        row("conversions without stamps", u"%Y 100%% %-"_s, u"2009 100% %-"_s);
        row("nothing", u"text [[ ]]\n"_s, u"text [[ ]]\n"_s);
    }

    void fillsStamps()
    {
        QFETCH(QString, text);

        parseNSStringStamp4strftime(text, QDateTime(QDate(2009, 3, 5), QTime(14, 7)));
        QTEST(text, "expected");
    }

    void userFormatsComeFromTheDefaults()
    {
        const QDateTime moment(QDate(2009, 3, 5), QTime(14, 7));
        const auto filled = [&moment](QString text) {
            parseNSStringStamp4strftime(text, moment);
            return text;
        };
        const auto setFormat = [](const QString& key, const Value& format, const QString& domain = u"global"_s) {
            Preferences::setValue(key, format, domain);
            QVERIFY(Preferences::synchronize(domain));
            UserDefaults::standardUserDefaults().synchronize();
        };
        // Those of an attached domain are not the user's.
        UserDefaults::standardUserDefaults().addSuiteNamed(u"helper"_s);
        setFormat(u"NSShortDateFormatString"_s, u"%Y"_s, u"helper"_s);
        QCOMPARE(filled(u"[[0]]"_s), u"5 Mar 2009"_s);
        // A format may hold a stamp, or complete one; only those that come later in the order are filled in.
        setFormat(u"NSShortDateFormatString"_s, u"%d.%m. [[3]]"_s);
        QCOMPARE(filled(u"[[0]] %x"_s), u"05.03. 14:07 05.03. [[3]]"_s);
        setFormat(u"NSShortDateFormatString"_s, u"6"_s);
        setFormat(u"NSTimeFormatString"_s, u"[[2]][[0]]"_s);
        QCOMPARE(filled(u"[[[[0]]]] [[4]]"_s), u"2009-03-05 [[2]][[0]]"_s);
        setFormat(u"NSShortDateFormatString"_s, {});
        setFormat(u"NSTimeFormatString"_s, {});
    }
};

QTEST_GUILESS_MAIN(StampsTest)
#include "StampsTest.moc"
