// SPDX-License-Identifier: MIT
#include "ModalDriver.h"

#include <PTHotKeysLib/src/PTHotKeyCenter.h>
#include <PTHotKeysLib/src/PTKeyComboPanel.h>
#include <platform/desktop/Bundle.h>

#include <QAccessible>
#include <QKeyEvent>
#include <QPushButton>
#include <QRegularExpression>
#include <QShortcut>
#include <QTemporaryDir>
#include <QTest>

#include <DataTable.h>
#include <Files.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int command = 0x100;

/// A key press as the window system makes it, with the scan code of the key.
void pressKey(QWidget* widget, int key, Qt::KeyboardModifiers modifiers, quint32 scanCode)
{
    QKeyEvent press(QEvent::KeyPress, key, modifiers, scanCode, 0, 0);
    QApplication::sendEvent(widget, &press);
}

class Target final : public PTKeyComboPanelTarget
{
public:
    void hotKeySheetDidEndWithReturnCode(int returnCode) override { codes.append(returnCode); }

    QList<int> codes;
};

} // namespace

class KeyComboPanelTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void namesTableThatIsNoDictionaryIsReported()
    {
        const QTemporaryDir bundle;
        Files::write(bundle.path() + u"/Contents/Resources/PTKeyCodes.plist"_s, "(a, b)");
        Bundle::registerBundle(bundle.path());
        QTest::ignoreMessage(QtWarningMsg,
            QRegularExpression(u"PTKeyCodes.plist is no table of key names: its root is no dictionary"_s));
        QVERIFY(!PTKeyCombo::_keyCodesDictionary());
    }

    void panelRecordsKeyPresses_data()
    {
        const DataTable<int, Qt::KeyboardModifiers, quint32, PTKeyCombo> row("key", "modifiers", "scanCode", "combo");
        row("command-shift-K", Qt::Key_K, Qt::MetaModifier | Qt::ShiftModifier, 45, {0x28, 0x300});
        row("option-control-K", Qt::Key_K, Qt::AltModifier | Qt::ControlModifier, 45, {0x28, 0x1800});
        row("without modifiers", Qt::Key_K, Qt::NoModifier, 45, {0x28, 0});
        row("Tab", Qt::Key_Tab, Qt::NoModifier, 23, {0x30, 0});
        row("shift-Tab", Qt::Key_Backtab, Qt::ShiftModifier, 23, {0x30, 0x200});
        row("control-Return", Qt::Key_Return, Qt::ControlModifier, 36, {0x24, 0x1000});
        row("shift-keypad Enter", Qt::Key_Enter, Qt::ShiftModifier | Qt::KeypadModifier, 104, {0x4C, 0x200});
        row("option-Escape", Qt::Key_Escape, Qt::AltModifier, 9, {0x35, 0x800});
        row("space bar", Qt::Key_Space, Qt::ControlModifier, 65, {0x31, 0x1000});
        row("function key", Qt::Key_F5, Qt::MetaModifier, 71, {0x60, 0x8100});
        row("mnemonic of a button", Qt::Key_O, Qt::AltModifier, 32, {0x1F, 0x800});
        row("letter of an on-screen keyboard", Qt::Key_Z, Qt::MetaModifier, 0, {0x06, 0x100});
        row("Home of an on-screen keyboard", Qt::Key_Home, Qt::MetaModifier, 0, {0x73, 0x8100});
    }

    void panelRecordsKeyPresses()
    {
        const auto [key, modifiers, scanCode, combo] = currentRow<int, Qt::KeyboardModifiers, quint32, PTKeyCombo>();
        PTKeyComboPanel panel;
        panel.runSheeetForModalWindow_target(nullptr, nullptr);
        QVERIFY(panel.mKeyBcaster->hasFocus() || panel.window()->focusWidget() == panel.mKeyBcaster);
        pressKey(panel.mKeyBcaster, key, modifiers, scanCode);
        QCOMPARE(panel.keyCombo(), combo);
        QCOMPARE(panel.mComboField->text(), combo.description());
        QCOMPARE(QAccessible::queryAccessibleInterface(panel.mComboField)->text(QAccessible::Name),
            u"Key combination: "_s + combo.description());
        // Where nothing has the focus the window gets the key.
        panel.setKeyCombo({});
        pressKey(panel.window(), key, modifiers, scanCode);
        QCOMPARE(panel.keyCombo(), combo);
        QVERIFY(panel.window()->isVisible());
    }

    void panelTakesShortcutsAndModifiersAloneRecordNothing()
    {
        PTKeyComboPanel panel;
        panel.runSheeetForModalWindow_target(nullptr, nullptr);
        bool activated = false;
        QShortcut shortcut(QKeySequence(Qt::CTRL | Qt::Key_Q), panel.window());
        connect(&shortcut, &QShortcut::activated, this, [&activated] { activated = true; });
        QTest::keyClick(panel.mKeyBcaster, Qt::Key_Q, Qt::ControlModifier);
        QVERIFY(!activated);
        QCOMPARE(panel.keyCombo(), PTKeyCombo(0x0C, 0x1000));
        pressKey(panel.mKeyBcaster, Qt::Key_Shift, Qt::NoModifier, 50);
        pressKey(panel.mKeyBcaster, Qt::Key_Control, Qt::NoModifier, 66); // Caps Lock as Control
        pressKey(panel.mKeyBcaster, Qt::Key_MediaPlay, Qt::NoModifier, 172);
        QCOMPARE(panel.keyCombo(), PTKeyCombo(0x0C, 0x1000));
    }

    void bareDialogKeysPressButtons_data()
    {
        const DataTable<int, Qt::KeyboardModifiers, quint32, int> row("key", "modifiers", "scanCode", "code");
        row("Return", Qt::Key_Return, {}, 36U, 1);
        row("keypad Enter", Qt::Key_Enter, Qt::KeypadModifier, 104U, 1);
        row("Escape", Qt::Key_Escape, {}, 9U, 0);
        row("Caps Lock as Escape", Qt::Key_Escape, {}, 66U, 0);
    }

    void bareDialogKeysPressButtons()
    {
        const auto [key, modifiers, scanCode, code] = currentRow<int, Qt::KeyboardModifiers, quint32, int>();
        PTKeyComboPanel panel;
        Target target;
        // With the focus on the recorder, and with the focus nowhere.
        for (const bool toWindow : {false, true}) {
            panel.setKeyCombo({0x28, command});
            panel.runSheeetForModalWindow_target(nullptr, &target);
            QVERIFY(panel.isRunning());
            QWidget* const receiver = toWindow ? static_cast<QWidget*>(panel.window()) : panel.mKeyBcaster;
            pressKey(receiver, key, modifiers, scanCode);
            QVERIFY(!panel.isRunning());
            QCOMPARE(panel.keyCombo(), PTKeyCombo(0x28, command));
        }
        QCOMPARE(target.codes, QList({code, code}));
    }

    void modalRunReturnsCode_data()
    {
        const DataTable<QString, int, bool> row("button", "code", "cleared");
        row("OK", u"OK"_s, 1, false);
        row("Cancel", u"Cancel"_s, 0, false);
        row("Clear", u"Clear"_s, 1, true);
    }

    void modalRunReturnsCode()
    {
        const auto [button, code, cleared] = currentRow<QString, int, bool>();
        PTKeyComboPanel panel;
        panel.setKeyBindingName(u"Pause/Resume"_s);
        const ModalDriver driver([&panel, button = button](QWidget* window) {
            QVERIFY(panel.mTitleField->text().contains(u"Pause/Resume"_s));
            pressKey(window->focusWidget(), Qt::Key_J, Qt::MetaModifier, 44);
            pressKey(window->focusWidget(), Qt::Key_K, Qt::MetaModifier, 45);
            ModalDriver::click(button)(window);
        });
        QCOMPARE(panel.runModal(), code);
        QVERIFY(!panel.window()->isVisible());
        QCOMPARE(panel.keyCombo(), cleared ? PTKeyCombo() : PTKeyCombo(0x28, command));
    }

    void modalRunRegistersHotKey()
    {
        const auto key = std::make_shared<PTHotKey>(u"one"_s, PTKeyCombo());
        key->setName(u"One"_s);
        const ModalDriver driver([](QWidget* window) {
            pressKey(window->focusWidget(), Qt::Key_K, Qt::MetaModifier, 45);
            ModalDriver::click(u"OK"_s)(window);
        });
        PTKeyComboPanel::sharedPanel().runModalForHotKey(key);
        QCOMPARE(key->keyCombo(), PTKeyCombo(0x28, command));
        QCOMPARE(PTHotKeyCenter::sharedCenter().hotKeyWithIdentifier(u"one"_s), key);
        PTHotKeyCenter::sharedCenter().unregisterHotKey(key);
    }

    void sheetTellsTargetOnce()
    {
        QWidget window;
        window.show();
        Target target;
        PTKeyComboPanel& panel = PTKeyComboPanel::sharedPanel();
        for (int run = 1; run <= 2; ++run) {
            panel.runSheeetForModalWindow_target(&window, &target);
            QCOMPARE(panel.window()->windowModality(), Qt::WindowModal);
            // As an assistive program does it: no pointer, no key.
            auto* const button = panel.window()->findChild<QPushButton*>(u"okButton"_s);
            QAccessible::queryAccessibleInterface(button)->actionInterface()->doAction(
                QAccessibleActionInterface::pressAction());
            QTRY_COMPARE(target.codes.size(), run);
            QVERIFY(!panel.window()->isVisible());
        }
        QCOMPARE(target.codes, QList({1, 1}));
    }

    void sheetGoesWithItsWindow()
    {
        Target target;
        PTKeyComboPanel panel;
        auto window = std::make_unique<QWidget>();
        window->show();
        panel.runSheeetForModalWindow_target(window.get(), &target);
        window.reset();
        QVERIFY(target.codes.isEmpty());
        panel.setKeyCombo({0x28, command});
        panel.runSheeetForModalWindow_target(nullptr, &target);
        QCOMPARE(panel.mComboField->text(), panel.keyCombo().description());
        panel.cancel();
        QCOMPARE(target.codes, QList{0});
    }

    void panelSpeaksTheUsersLanguage()
    {
        QLocale::setDefault(QLocale::German);
        Bundle::registerBundle(QStringLiteral(BLIPSY_TEST_BUNDLE));
        PTKeyComboPanel panel;
        QVERIFY(panel.window()->findChild<QPushButton*>(u"cancelButton"_s)->text().contains(u"Abbrechen"_s));
        panel.setKeyBindingName(u"Pause"_s);
        QCOMPARE(panel.mTitleField->text(), u"Drücken Sie die Tasten für „Pause“."_s);
    }
};

QTEST_MAIN(KeyComboPanelTest)
#include "KeyComboPanelTest.moc"
