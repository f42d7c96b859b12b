#include "OptionsFixture.h"

#include <core/SharedNames.h>

#include <QAccessible>
#include <QKeyEvent>
#include <QTest>

using namespace Qt::StringLiterals;
using PropertyList::Dictionary;
using PropertyList::Value;

namespace {

PTKeyComboPanel& panel()
{
    return PTKeyComboPanel::sharedPanel();
}

} // namespace

class HotKeyOptionsTest final : public OptionsFixture
{
    Q_OBJECT

private:
    void recordHotKey(QPushButton* button, int key, Qt::KeyboardModifiers modifiers, const QString& end)
    {
        m_controller->hitSetAddHotKey(button);
        QKeyEvent press(QEvent::KeyPress, key, modifiers);
        QApplication::sendEvent(panel().mKeyBcaster, &press);
        panel().window()->findChild<QPushButton*>(end)->click();
    }

private Q_SLOTS:

    void hotKeyIsRecordedStoredAndAnnounced()
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
        const auto* const accessible = QAccessible::queryAccessibleInterface(m_form.pauseHotKeyButton);
        QCOMPARE(accessible->text(QAccessible::Name), u"Hot key of Pause/Resume: \u2318\u2325P"_s);
        // The tests' session has no server that grants hot keys.
        QVERIFY(m_form.pauseHotKeyButton->toolTip().contains(u"does nothing in this session"_s));
    }

    void panelThatIsUpStaysWithItsHotKey()
    {
        m_controller->hitSetAddHotKey(m_form.pauseHotKeyButton);
        // As an assistive program does it, which reaches what the sheet blocks.
        m_controller->hitSetAddHotKey(m_form.addHotKeyButton);
        QCOMPARE(panel().keyBindingName(), u"Pause/Resume"_s);
        panel().setKeyCombo({0x23, 0x900});
        panel().ok();
        QCOMPARE(m_form.addHotKeyButton->text(), u"(None)"_s);
        QCOMPARE(m_form.pauseHotKeyButton->text(), u"\u2318\u2325P"_s);
        QTRY_COMPARE(m_recorder.names(), QStringList{NotificationName::preferencesChanged});
    }

    void cancelKeepsHotKey()
    {
        recordHotKey(m_form.addHotKeyButton, Qt::Key_P, Qt::MetaModifier, u"cancelButton"_s);
        QCOMPARE(m_form.addHotKeyButton->text(), u"(None)"_s);
        QVERIFY(m_controller->mHotKey[0]->keyCombo().isClearCombo());
        QVERIFY(setting(u"Add a Clipping"_s).isNull());
        // What is posted next is the first that is heard.
        BYGlobals::sendNotification(u"test ends"_s);
        QTRY_COMPARE(m_recorder.names(), QStringList{u"test ends"_s});
    }

    void clearStoresClearCombination()
    {
        recordHotKey(m_form.editHotKeyButton, Qt::Key_P, Qt::MetaModifier, u"clearButton"_s);
        QCOMPARE(m_form.editHotKeyButton->text(), u"(None)"_s);
        QCOMPARE(setting(u"Edit Clippings"_s).dictionary()->value(u"keyCode"), Value(-1));
        QCOMPARE(setting(u"Edit Clippings"_s).dictionary()->value(u"modifiers"), Value(-1));
    }

    void unreadableHotKeysShowNone_data()
    {
        QTest::addColumn<Value>("stored");
        QTest::newRow("text") << Value(u"command P"_s);
        QTest::newRow("empty dictionary") << Value(Dictionary::create());
        QTest::newRow("data") << Value(QByteArray("abc"));
    }

    void unreadableHotKeysShowNone()
    {
        QFETCH(Value, stored);
        BYGlobals::storeSetting(stored, u"Add a Clipping"_s);
        open();
        QCOMPARE(m_form.addHotKeyButton->text(), u"(None)"_s);
        QVERIFY(m_controller->mHotKey[0]->keyCombo().isClearCombo());
    }
};

QTEST_MAIN(HotKeyOptionsTest)
#include "HotKeyOptionsTest.moc"
