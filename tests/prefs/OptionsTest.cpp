// SPDX-License-Identifier: MIT
#include "OptionsFixture.h"

#include <core/HelperProcess.h>
#include <core/SharedNames.h>
#include <platform/bytes/CharacterBitmap.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDesktopServices>
#include <QDir>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using PropertyList::Dictionary;
using PropertyList::Value;

namespace {

CharacterBitmap triggers()
{
    return CharacterBitmap(setting(Settings::triggersSet.key).data());
}

CharacterBitmap bitmap(QStringView characters)
{
    CharacterBitmap result;
    result.add(characters);
    return result;
}

bool helperRuns()
{
    return QDBusConnection::sessionBus().interface()->isServiceRegistered(BYGlobals::appID());
}

} // namespace

class OptionsTest final : public OptionsFixture
{
    Q_OBJECT

private:
    QUrl m_opened;

    Q_INVOKABLE void takeUrl(const QUrl& url) { m_opened = url; }

private Q_SLOTS:

    void showsIdleTalkInterval_data()
    {
        QTest::addColumn<Value>("stored");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("step");
        QTest::newRow("unset") << Value() << u"2"_s << 2;
        QTest::newRow("number") << Value(u"15"_s) << u"15"_s << 15;
        QTest::newRow("not a number") << Value(u"often"_s) << u"often"_s << 0;
        QTest::newRow("beyond the bounds") << Value(u"99999999999"_s) << u"99999999999"_s << 120;
        QTest::newRow("wrong type") << Value(Dictionary::create()) << QString() << 0;
    }

    void showsIdleTalkInterval()
    {
        QFETCH(Value, stored);
        BYGlobals::storeSetting(stored, Settings::idleTalkIntervalPref.key);
        open();
        QTEST(form().idleTalkIntervalText->text(), "text");
        QTEST(form().idleTalkIntervalStepper->value(), "step");
        QCOMPARE(setting(Settings::idleTalkIntervalPref.key), stored);
    }

    void intervalFromFieldLeavesStepper()
    {
        form().idleTalkIntervalText->selectAll();
        QTest::keyClicks(form().idleTalkIntervalText, u"7 minutes\r"_s);
        QCOMPARE(form().idleTalkIntervalText->text(), u"7"_s);
        QCOMPARE(setting(Settings::idleTalkIntervalPref.key), Value(u"7"_s));
        QCOMPARE(form().idleTalkIntervalStepper->value(), 2);
    }

    void stepperStepsByKeyboardAndTakesNoText()
    {
        auto* const stepper = form().idleTalkIntervalStepper;
        QTest::keyClick(stepper, Qt::Key_Up);
        QTest::keyClick(stepper, Qt::Key_9);
        QCOMPARE(stepper->value(), 3);
        QCOMPARE(form().idleTalkIntervalText->text(), u"3"_s);
    }

    void arrowReplacesFifthCharacterOfTitle_data()
    {
        QTest::addColumn<QString>("arrow");
        QTest::addColumn<QString>("title");
        QTest::newRow("none") << QString() << u"Menu▾ shows"_s;
        QTest::newRow("one character") << u"→"_s << u"Menu→ shows"_s;
        QTest::newRow("longer") << u" -> "_s << u"Menu ->  shows"_s;
    }

    void arrowReplacesFifthCharacterOfTitle()
    {
        QFETCH(QString, arrow);
        BYGlobals::storeSetting(arrow, Settings::arrowPref.key);
        open();
        QTEST(form().menuPref->title(), "title");
    }

    void triggerClickChangesItsCharacters_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<int>("tag");
        QTest::addColumn<bool>("on");
        QTest::addColumn<QString>("stored");
        QTest::newRow("title on") << u";"_s << 0 << true << u" \t\r;"_s;
        QTest::newRow("several characters on") << u"«&&»"_s << 0 << true << u" \t\r«&»"_s;
        QTest::newRow("tab off") << u"⇥"_s << 20 << false << u" \r"_s;
        QTest::newRow("space off") << u"␣"_s << 21 << false << u"\t\r"_s;
        QTest::newRow("return off") << u"↩"_s << 22 << false << u" \t"_s;
        QTest::newRow("no-break space on") << u"⍽"_s << 23 << true << u" \t\r\u00A0"_s;
        QTest::newRow("escape on") << u"⎋"_s << 24 << true << u" \t\r\u001B"_s;
        QTest::newRow("beyond the bitmap") << u"\U0001F600x"_s << 0 << true << u" \t\rx"_s;
    }

    void triggerClickChangesItsCharacters()
    {
        QFETCH(QString, title);
        QFETCH(int, tag);
        QFETCH(bool, on);
        QFETCH(QString, stored);
        auto* const cell = trigger(u","_s);
        cell->setText(title);
        cell->setProperty("tag", tag);
        cell->setChecked(!on);
        cell->click();
        QCOMPARE(triggers(), bitmap(stored));
        QCOMPARE(setting(Settings::triggersSet.key).data().size(), 8192);
        QCOMPARE(setting(Settings::noTriggers.key), Value(u"0"_s));
        QTRY_COMPARE(m_recorder.names().count(NotificationName::preferencesChanged), 2);
    }

    void lastTriggerGoneMeansNone()
    {
        trigger(u"⇥"_s)->click();
        trigger(u"␣"_s)->click();
        trigger(u"↩"_s)->click();
        QCOMPARE(setting(Settings::triggersSet.key).data(), QByteArray(8192, '\0'));
        QCOMPARE(setting(Settings::noTriggers.key), Value(u"1"_s));
        trigger(u"."_s)->click();
        trigger(u","_s)->setTristate();
        trigger(u","_s)->click();
        QCOMPARE(trigger(u","_s)->checkState(), Qt::PartiallyChecked);
        QCOMPARE(triggers(), bitmap(u"."));
        QCOMPARE(setting(Settings::noTriggers.key), Value(u"0"_s));
    }

    void selectAllTakesTitlesOnly()
    {
        form().deSelectAllTriggersButton->click();
        QCOMPARE(setting(Settings::noTriggers.key), Value(u"1"_s));
        QVERIFY(!trigger(u"␣"_s)->isChecked());
        form().selectAllTriggersButton->click();
        QVERIFY(trigger(u"⎋"_s)->isChecked());
        QCOMPARE(setting(Settings::noTriggers.key), Value(u"0"_s));
        QVERIFY(triggers().contains(u'\r') && triggers().contains(u'{') && triggers().contains(u'⎋'));
        QVERIFY(!triggers().contains(u'\u00A0') && !triggers().contains(u'\u001B'));
        // A title in words would make letters end a phrase.
        for (char16_t letter = u'A'; letter <= u'z'; ++letter) {
            QVERIFY(!QChar(letter).isLetter() || !triggers().contains(letter));
        }
    }

    void checkBoxWritesUnderItsTitle()
    {
        form().playSoundOnDropPrefButton->setChecked(false);
        form().playSoundOnDropPrefButton->click();
        QCOMPARE(setting(Settings::playSoundOnDrop.key), Value(u"1"_s));
        QCheckBox box(u"Rock && &roll"_s);
        controller().enterExpansionPref(&box);
        QCOMPARE(setting(u"Rock & roll"_s), Value(u"0"_s));
        box.setCheckState(Qt::PartiallyChecked);
        controller().enterExpansionPref(&box);
        QCOMPARE(setting(u"Rock & roll"_s), Value(u"0"_s));
    }

    void radioMatrixTagsArePositions()
    {
        for (int i = 0; i < 5; ++i) {
            QCOMPARE(Matrix::tagOf(form().menuPrefsMatrix->cellAtRow_column(i, 0)), i);
            if (i < 3) {
                QCOMPARE(Matrix::tagOf(form().sortPrefsMatrix->cellAtRow_column(0, i)), i);
                QCOMPARE(Matrix::tagOf(form().iTunesAnnouncerPrefMatrix->cellAtRow_column(0, i)), i);
            }
        }
        form().sortAsImported->click();
        QCOMPARE(setting(Settings::sortPref.key), Value(u"2"_s));
        form().announceTitle->click();
        QCOMPARE(setting(Settings::announcerPref.key), Value(u"1"_s));
        form().passTrigger->click();
        QCOMPARE(setting(Settings::triggerInhibPref.key), Value(u"0"_s));
    }

    void menuOptionRestartsRunningHelper_data()
    {
        QTest::addColumn<int>("before");
        QTest::addColumn<int>("chosen");
        QTest::addColumn<bool>("restarts");
        QTest::newRow("into 4") << 3 << 4 << true;
        QTest::newRow("out of 4") << 4 << 0 << true;
        QTest::newRow("elsewhere") << 2 << 3 << false;
        QTest::newRow("4 again") << 4 << 4 << false;
    }

    void menuOptionRestartsRunningHelper()
    {
        QFETCH(int, before);
        QFETCH(int, chosen);
        QFETCH(bool, restarts);
        BYGlobals::storeSetting(QString::number(before), Settings::menuPref.key);
        QVERIFY(HelperProcess::start());
        QTRY_VERIFY(helperRuns());
        const auto pid = [] {
            return QDBusConnection::sessionBus().interface()->servicePid(BYGlobals::appID()).value();
        };
        const uint first = pid();
        form().menuPrefsMatrix->cellAtRow_column(chosen, 0)->click();
        QCOMPARE(setting(Settings::menuPref.key), Value(QString::number(chosen)));
        if (restarts) {
            QTRY_VERIFY(form().onOffRadioButton->cellAtRow_column(0, 0)->isChecked());
            QTRY_VERIFY(helperRuns() && pid() != first);
        } else {
            // The test of the service answers before this second question is answered.
            bool answered = false;
            HelperProcess::isRunning(this, [&answered](bool) { answered = true; });
            QTRY_VERIFY(answered);
            QCOMPARE(pid(), first);
        }
        HelperProcess::stop();
        QTRY_VERIFY(!helperRuns());
    }

    void helpBookIsChosenByItsName()
    {
        QDesktopServices::setUrlHandler(u"file"_s, this, "takeUrl");
        const QString help = m_bundle.path() + u"/Contents/Resources/Help/"_s;
        for (const QString& book : {u"Another book"_s, u"Blipsy 1.x Help"_s}) {
            QVERIFY(QDir().mkpath(help + book));
            QVERIFY(QFile(help + book + u"/index.html"_s).open(QFile::WriteOnly));
        }
        form().helpButton->click();
        QCOMPARE(m_opened.toLocalFile(), help + u"Blipsy 1.x Help/index.html"_s);
        QVERIFY(QDir(help + u"Blipsy 1.x Help"_s).removeRecursively());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"has no start page"_s));
        QTest::ignoreMessage(QtWarningMsg, "AHGotoPage returned error: -10791");
        form().helpButton->click();
    }

    void everyControlCanBeReachedAndNamed()
    {
        for (const QWidget* const control : m_tab->findChildren<QWidget*>()) {
            if (control->focusPolicy() == Qt::NoFocus || !control->isVisible()) {
                continue;
            }
            const auto* const button = qobject_cast<const QAbstractButton*>(control);
            const QString name =
                control->accessibleName().isEmpty() && button ? button->text() : control->accessibleName();
            QVERIFY2(name.size() > 1, qPrintable(control->objectName()));
            // Of exclusive buttons Tab reaches the one that is on.
            const bool byTab = control->focusPolicy() & Qt::TabFocus || (button && button->autoExclusive());
            QVERIFY2(byTab, qPrintable(control->objectName()));
        }
    }
};

QTEST_MAIN(OptionsTest)
#include "OptionsTest.moc"
