// SPDX-License-Identifier: MIT
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
        button->click();
        QKeyEvent press(QEvent::KeyPress, key, modifiers);
        QApplication::sendEvent(panel().mKeyBcaster, &press);
        panel().window()->findChild<QPushButton*>(end)->click();
    }

private Q_SLOTS:

    void hotKeyIsRecordedStoredAndAnnounced()
    {
        recordHotKey(form().pauseHotKeyButton, Qt::Key_P, Qt::MetaModifier | Qt::AltModifier, u"okButton"_s);
        QCOMPARE(form().pauseHotKeyButton->text(), u"\u2318\u2325P"_s);
        QCOMPARE(form().addHotKeyButton->text(), u"(None)"_s);
        const Value stored = setting(u"Pause/Resume"_s);
        QCOMPARE(stored.dictionary()->value(u"keyCode"), Value(0x23));
        QCOMPARE(stored.dictionary()->value(u"modifiers"), Value(0x900));
        QTRY_COMPARE(m_recorder.names(), QStringList{NotificationName::preferencesChanged});
        open();
        QCOMPARE(form().pauseHotKeyButton->text(), u"\u2318\u2325P"_s);
        QCOMPARE(controller().mHotKey[2]->name(), u"Pause/Resume"_s);
        const auto* const accessible = QAccessible::queryAccessibleInterface(form().pauseHotKeyButton);
        QCOMPARE(accessible->text(QAccessible::Name), u"Hot key of Pause/Resume: \u2318\u2325P"_s);
        // The tests' session has no server that grants hot keys.
        QVERIFY(form().pauseHotKeyButton->toolTip().contains(u"does nothing in this session"_s));
    }

    void panelThatIsUpStaysWithItsHotKey()
    {
        form().pauseHotKeyButton->click();
        // As an assistive program does it, which reaches what the sheet blocks.
        controller().hitSetAddHotKey(form().addHotKeyButton);
        QCOMPARE(panel().keyBindingName(), u"Pause/Resume"_s);
        panel().setKeyCombo({0x23, 0x900});
        panel().ok();
        QCOMPARE(form().addHotKeyButton->text(), u"(None)"_s);
        QCOMPARE(form().pauseHotKeyButton->text(), u"\u2318\u2325P"_s);
        QTRY_COMPARE(m_recorder.names(), QStringList{NotificationName::preferencesChanged});
    }

    void cancelKeepsHotKey()
    {
        recordHotKey(form().addHotKeyButton, Qt::Key_P, Qt::MetaModifier, u"cancelButton"_s);
        QCOMPARE(form().addHotKeyButton->text(), u"(None)"_s);
        QVERIFY(controller().mHotKey[0]->keyCombo().isClearCombo());
        QVERIFY(setting(u"Add a Clipping"_s).isNull());
        // What is posted next is the first that is heard.
        BYGlobals::sendNotification(u"test ends"_s);
        QTRY_COMPARE(m_recorder.names(), QStringList{u"test ends"_s});
    }

    void clearStoresClearCombination()
    {
        recordHotKey(form().editHotKeyButton, Qt::Key_P, Qt::MetaModifier, u"clearButton"_s);
        QCOMPARE(form().editHotKeyButton->text(), u"(None)"_s);
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
        QCOMPARE(form().addHotKeyButton->text(), u"(None)"_s);
        QVERIFY(controller().mHotKey[0]->keyCombo().isClearCombo());
    }
};

QTEST_MAIN(HotKeyOptionsTest)
#include "HotKeyOptionsTest.moc"
