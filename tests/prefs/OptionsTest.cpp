#include "ui_OptionsTab.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDir>
#include <QKeyEvent>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <BYController.h>
#include <BYGlobals.h>
#include <Bundle.h>
#include <CharacterBitmap.h>
#include <HelperProcess.h>
#include <NotificationRecorder.h>
#include <SharedNames.h>

using namespace Qt::StringLiterals;
using PropertyList::Dictionary;
using PropertyList::Value;

namespace {

Value setting(const QString& key)
{
    return BYGlobals::retrieveUntypedObjectFromUserDefaults(key);
}

CharacterBitmap triggers()
{
    return CharacterBitmap(setting(SettingKey::triggersSet).data());
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

PTKeyComboPanel& panel()
{
    return PTKeyComboPanel::sharedPanel();
}

} // namespace

class OptionsTest final : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_bundle;
    std::unique_ptr<QWidget> m_page;
    Ui::OptionsTab m_form;
    std::unique_ptr<BYController> m_controller;
    NotificationRecorder m_recorder;

    /// The page as it is when the pane opens with the settings of this moment.
    void open()
    {
        m_page = std::make_unique<QWidget>();
        m_form.setupUi(m_page.get());
        m_controller = std::make_unique<BYController>();
        m_controller->idleTalkIntervalText = m_form.idleTalkIntervalText;
        m_controller->idleTalkIntervalStepper = m_form.idleTalkIntervalStepper;
        m_controller->menuPref = m_form.menuPref;
        m_controller->triggersPrefsMatrix = m_form.triggersPrefsMatrix;
        m_controller->onOffRadioButton = m_form.onOffRadioButton;
        m_controller->addHotKeyButton = m_form.addHotKeyButton;
        m_controller->editHotKeyButton = m_form.editHotKeyButton;
        m_controller->pauseHotKeyButton = m_form.pauseHotKeyButton;
        m_controller->awakeFromNib();
        const auto* const controller = m_controller.get();
        connect(m_form.triggersPrefsMatrix, &Matrix::actionTriggered, controller,
            [this](Matrix* sender) { m_controller->enterTriggerPref(sender); });
        connect(m_form.menuPrefsMatrix, &Matrix::actionTriggered, controller,
            [this](Matrix* sender) { m_controller->enterMenuPref(sender); });
        m_page->show();
    }

    void recordHotKey(QPushButton* button, int key, Qt::KeyboardModifiers modifiers, const QString& end)
    {
        m_controller->hitSetAddHotKey(button);
        QKeyEvent press(QEvent::KeyPress, key, modifiers);
        QApplication::sendEvent(panel().mKeyBcaster, &press);
        panel().window()->findChild<QPushButton*>(end)->click();
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void showsIdleTalkInterval_data();
    void showsIdleTalkInterval();
    void intervalFromFieldLeavesStepper();
    void stepperStepsByKeyboardAndTakesNoText();
    void arrowReplacesFifthCharacterOfTitle_data();
    void arrowReplacesFifthCharacterOfTitle();
    void triggerClickChangesItsCharacters_data();
    void triggerClickChangesItsCharacters();
    void lastTriggerGoneMeansNone();
    void selectAllTakesTitlesOnly();
    void checkBoxWritesUnderItsTitle();
    void radioMatrixTagsArePositions();
    void menuOptionRestartsRunningHelper_data();
    void menuOptionRestartsRunningHelper();
    void hotKeyIsRecordedStoredAndAnnounced();
    void cancelKeepsHotKey();
    void clearStoresClearCombination();
    void unreadableHotKeysShowNone_data();
    void unreadableHotKeysShowNone();
    void missingHelpBookIsLogged();
    void everyControlCanBeReachedAndNamed();
};

void OptionsTest::initTestCase()
{
    const QString program = m_bundle.path() + u"/Contents/BlipsyMenu.app/Contents/MacOS/BlipsyMenu"_s;
    QVERIFY(QDir().mkpath(QFileInfo(program).path()));
    QVERIFY(QDir().mkpath(m_bundle.path() + u"/Contents/Resources"_s));
    QVERIFY(QFile::copy(QStringLiteral(STAND_IN_HELPER), program));
    QVERIFY(QFile::copy(QFINDTESTDATA("../../resources/PTKeyCodes.plist"),
        m_bundle.path() + u"/Contents/Resources/PTKeyCodes.plist"_s));
    Bundle::registerBundle(paneBundleIdentifier, m_bundle.path());
}

void OptionsTest::init()
{
    for (const QString& key :
        {SettingKey::idleTalkIntervalPref, SettingKey::triggersSet, SettingKey::noTriggers, SettingKey::menuPref,
            SettingKey::arrowPref, u"Add a Clipping"_s, u"Edit Clippings"_s, u"Pause/Resume"_s}) {
        BYGlobals::storeSetting({}, key);
    }
    open();
    BYGlobals::sendNotification(u"test begins"_s);
    QTRY_VERIFY(m_recorder.names().endsWith(u"test begins"_s));
    m_recorder.clear();
}

void OptionsTest::showsIdleTalkInterval_data()
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

void OptionsTest::showsIdleTalkInterval()
{
    QFETCH(Value, stored);
    BYGlobals::storeSetting(stored, SettingKey::idleTalkIntervalPref);
    open();
    QTEST(m_form.idleTalkIntervalText->text(), "text");
    QTEST(m_form.idleTalkIntervalStepper->value(), "step");
    QCOMPARE(setting(SettingKey::idleTalkIntervalPref), stored);
}

void OptionsTest::intervalFromFieldLeavesStepper()
{
    m_form.idleTalkIntervalText->setText(u"7 minutes"_s);
    m_controller->enterIdleTalkIntervalPref(m_form.idleTalkIntervalText);
    QCOMPARE(m_form.idleTalkIntervalText->text(), u"7"_s);
    QCOMPARE(setting(SettingKey::idleTalkIntervalPref), Value(u"7"_s));
    QCOMPARE(m_form.idleTalkIntervalStepper->value(), 2);
}

void OptionsTest::stepperStepsByKeyboardAndTakesNoText()
{
    auto* const stepper = m_form.idleTalkIntervalStepper;
    QTest::keyClick(stepper, Qt::Key_Up);
    QTest::keyClick(stepper, Qt::Key_9);
    QCOMPARE(stepper->value(), 3);
    m_controller->enterIdleTalkIntervalPref(stepper);
    QCOMPARE(m_form.idleTalkIntervalText->text(), u"3"_s);
}

void OptionsTest::arrowReplacesFifthCharacterOfTitle_data()
{
    QTest::addColumn<QString>("arrow");
    QTest::addColumn<QString>("title");
    QTest::newRow("none") << QString() << u"Menu▾ shows"_s;
    QTest::newRow("one character") << u"→"_s << u"Menu→ shows"_s;
    QTest::newRow("longer") << u" -> "_s << u"Menu ->  shows"_s;
}

void OptionsTest::arrowReplacesFifthCharacterOfTitle()
{
    QFETCH(QString, arrow);
    BYGlobals::storeSetting(arrow, SettingKey::arrowPref);
    open();
    QTEST(m_form.menuPref->title(), "title");
}

void OptionsTest::triggerClickChangesItsCharacters_data()
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

void OptionsTest::triggerClickChangesItsCharacters()
{
    QFETCH(QString, title);
    QFETCH(int, tag);
    QFETCH(bool, on);
    QFETCH(QString, stored);
    auto* const cell = m_form.commaTrigger;
    cell->setText(title);
    cell->setProperty("tag", tag);
    cell->setChecked(!on);
    cell->click();
    QCOMPARE(triggers(), bitmap(stored));
    QCOMPARE(setting(SettingKey::triggersSet).data().size(), 8192);
    QCOMPARE(setting(SettingKey::noTriggers), Value(u"0"_s));
    QTRY_COMPARE(m_recorder.names().count(NotificationName::preferencesChanged), 2);
}

void OptionsTest::lastTriggerGoneMeansNone()
{
    m_form.tabTrigger->click();
    m_form.spaceTrigger->click();
    m_form.returnTrigger->click();
    QCOMPARE(setting(SettingKey::triggersSet).data(), QByteArray(8192, '\0'));
    QCOMPARE(setting(SettingKey::noTriggers), Value(u"1"_s));
    m_form.periodTrigger->click();
    QCOMPARE(triggers(), bitmap(u"."));
    QCOMPARE(setting(SettingKey::noTriggers), Value(u"0"_s));
}

void OptionsTest::selectAllTakesTitlesOnly()
{
    m_controller->deSelectAllTriggers(nullptr);
    QCOMPARE(setting(SettingKey::noTriggers), Value(u"1"_s));
    QVERIFY(!m_form.spaceTrigger->isChecked());
    m_controller->selectAllTriggers(nullptr);
    QVERIFY(m_form.escapeTrigger->isChecked());
    QCOMPARE(setting(SettingKey::noTriggers), Value(u"0"_s));
    QVERIFY(triggers().contains(u'\r') && triggers().contains(u'{') && triggers().contains(u'⎋'));
    QVERIFY(!triggers().contains(u'\u00A0') && !triggers().contains(u'\u001B'));
    // A title in words would make letters end a phrase.
    for (char16_t letter = u'A'; letter <= u'z'; ++letter) {
        QVERIFY(!QChar(letter).isLetter() || !triggers().contains(letter));
    }
}

void OptionsTest::checkBoxWritesUnderItsTitle()
{
    m_form.playSoundOnDropPrefButton->setChecked(true);
    m_controller->enterExpansionPref(m_form.playSoundOnDropPrefButton);
    QCOMPARE(setting(SettingKey::playSoundOnDrop), Value(u"1"_s));
    QCheckBox box(u"Rock && &roll"_s);
    m_controller->enterExpansionPref(&box);
    QCOMPARE(setting(u"Rock & roll"_s), Value(u"0"_s));
}

void OptionsTest::radioMatrixTagsArePositions()
{
    for (int i = 0; i < 5; ++i) {
        QCOMPARE(Matrix::tagOf(m_form.menuPrefsMatrix->cellAtRow_column(i, 0)), i);
        if (i < 3) {
            QCOMPARE(Matrix::tagOf(m_form.sortPrefsMatrix->cellAtRow_column(0, i)), i);
            QCOMPARE(Matrix::tagOf(m_form.iTunesAnnouncerPrefMatrix->cellAtRow_column(0, i)), i);
        }
    }
    m_form.sortPrefsMatrix->setState_atRow_column(true, 0, 2);
    m_controller->enterSortPref(m_form.sortPrefsMatrix);
    QCOMPARE(setting(SettingKey::sortPref), Value(u"2"_s));
    m_controller->iTunesAnnouncerPref(m_form.iTunesAnnouncerPrefMatrix);
    QCOMPARE(setting(SettingKey::announcerPref), Value(u"1"_s));
    m_controller->enterTriggerDelimitersPref(m_form.triggerDelimitersMatrix);
    QCOMPARE(setting(SettingKey::triggerInhibPref), Value(u"0"_s));
}

void OptionsTest::menuOptionRestartsRunningHelper_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("chosen");
    QTest::addColumn<bool>("restarts");
    QTest::newRow("into 4") << 3 << 4 << true;
    QTest::newRow("out of 4") << 4 << 0 << true;
    QTest::newRow("elsewhere") << 2 << 3 << false;
    QTest::newRow("4 again") << 4 << 4 << false;
}

void OptionsTest::menuOptionRestartsRunningHelper()
{
    QFETCH(int, before);
    QFETCH(int, chosen);
    QFETCH(bool, restarts);
    BYGlobals::storeSetting(QString::number(before), SettingKey::menuPref);
    QVERIFY(HelperProcess::start());
    QTRY_VERIFY(helperRuns());
    const auto pid = [] { return QDBusConnection::sessionBus().interface()->servicePid(BYGlobals::appID()).value(); };
    const uint first = pid();
    m_form.menuPrefsMatrix->cellAtRow_column(chosen, 0)->click();
    QCOMPARE(setting(SettingKey::menuPref), Value(QString::number(chosen)));
    if (restarts) {
        QTRY_VERIFY(m_form.onOffRadioButton->cellAtRow_column(0, 0)->isChecked());
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

void OptionsTest::hotKeyIsRecordedStoredAndAnnounced()
{
    recordHotKey(m_form.pauseHotKeyButton, Qt::Key_P, Qt::MetaModifier | Qt::AltModifier, u"okButton"_s);
    QCOMPARE(m_form.pauseHotKeyButton->text(), u"\u2318\u2325P"_s);
    QCOMPARE(m_form.addHotKeyButton->text(), u"(None)"_s);
    const Value stored = setting(u"Pause/Resume"_s);
    QCOMPARE(stored.dictionary()->value(u"keyCode"), Value(0x23));
    QCOMPARE(stored.dictionary()->value(u"modifiers"), Value(0x900));
    QTRY_COMPARE(m_recorder.names(), QStringList{NotificationName::preferencesChanged});
    open();
    QCOMPARE(m_form.pauseHotKeyButton->text(), u"\u2318\u2325P"_s);
    QCOMPARE(m_controller->mHotKey[2]->name(), u"Pause/Resume"_s);
}

void OptionsTest::cancelKeepsHotKey()
{
    recordHotKey(m_form.addHotKeyButton, Qt::Key_P, Qt::MetaModifier, u"cancelButton"_s);
    QCOMPARE(m_form.addHotKeyButton->text(), u"(None)"_s);
    QVERIFY(m_controller->mHotKey[0]->keyCombo().isClearCombo());
    QVERIFY(setting(u"Add a Clipping"_s).isNull());
    // What is posted next is the first that is heard.
    BYGlobals::sendNotification(u"test ends"_s);
    QTRY_COMPARE(m_recorder.names(), QStringList{u"test ends"_s});
}

void OptionsTest::clearStoresClearCombination()
{
    recordHotKey(m_form.editHotKeyButton, Qt::Key_P, Qt::MetaModifier, u"clearButton"_s);
    QCOMPARE(m_form.editHotKeyButton->text(), u"(None)"_s);
    QCOMPARE(setting(u"Edit Clippings"_s).dictionary()->value(u"keyCode"), Value(-1));
    QCOMPARE(setting(u"Edit Clippings"_s).dictionary()->value(u"modifiers"), Value(-1));
}

void OptionsTest::unreadableHotKeysShowNone_data()
{
    QTest::addColumn<Value>("stored");
    QTest::newRow("text") << Value(u"command P"_s);
    QTest::newRow("empty dictionary") << Value(Dictionary::create());
    QTest::newRow("data") << Value(QByteArray("abc"));
}

void OptionsTest::unreadableHotKeysShowNone()
{
    QFETCH(Value, stored);
    BYGlobals::storeSetting(stored, u"Add a Clipping"_s);
    open();
    QCOMPARE(m_form.addHotKeyButton->text(), u"(None)"_s);
    QVERIFY(m_controller->mHotKey[0]->keyCombo().isClearCombo());
}

void OptionsTest::missingHelpBookIsLogged()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"has no start page"_s));
    QTest::ignoreMessage(QtWarningMsg, "AHGotoPage returned error: -10791");
    m_controller->showHelp(nullptr);
}

void OptionsTest::everyControlCanBeReachedAndNamed()
{
    for (const QWidget* const control : m_page->findChildren<QWidget*>()) {
        if (control->focusPolicy() == Qt::NoFocus || !control->isVisible()) {
            continue;
        }
        const auto* const button = qobject_cast<const QAbstractButton*>(control);
        const QString name = control->accessibleName().isEmpty() && button ? button->text() : control->accessibleName();
        QVERIFY2(name.size() > 1, qPrintable(control->objectName()));
        // Of exclusive buttons Tab reaches the one that is on.
        const bool byTab = control->focusPolicy() & Qt::TabFocus || (button && button->autoExclusive());
        QVERIFY2(byTab, qPrintable(control->objectName()));
    }
}

QTEST_MAIN(OptionsTest)
#include "OptionsTest.moc"
