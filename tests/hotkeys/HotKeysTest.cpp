#include "ModalDriver.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QProcess>
#include <QPushButton>
#include <QShortcut>
#include <QTest>

#include <Bundle.h>
#include <HotKeyGrabs.h>
#include <InternalInconsistency.h>
#include <PTHotKeyCenter.h>
#include <PTKeyCodeTranslator.h>
#include <PTKeyComboPanel.h>

// The header, written for C, calls a field "explicit".
#define explicit explicitField
#include <xcb/xkb.h>
#undef explicit

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

constexpr int command = 0x100;
constexpr int shift = 0x200;

PTHotKey::Pointer hotKey(const QString& identifier, const PTKeyCombo& combo)
{
    return std::make_shared<PTHotKey>(identifier, combo);
}

/// Runs a program to its end. A server that is slow fails the test; it does not stall it.
bool run(const QString& program, const QStringList& arguments)
{
    constexpr int patience = 20'000;
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(program, arguments);
    return process.waitForFinished(patience) && process.exitCode() == 0;
}

/// One layout or several ("us,de"), of which the first is in use.
bool setLayout(const QString& layouts)
{
    return run(u"setxkbmap"_s, {layouts});
}

/// Switches to another of the layouts, as the desktop's indicator does, through a connection of its own.
void lockGroup(quint8 group)
{
    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    std::free(xcb_xkb_use_extension_reply(connection, xcb_xkb_use_extension(connection, 1, 0), nullptr));
    const auto request = xcb_xkb_latch_lock_state_checked(connection, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, group, 0, 0, 0);
    std::free(xcb_request_check(connection, request));
    xcb_disconnect(connection);
}

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

class HotKeysTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void namesFollowTheLayout_data();
    void namesFollowTheLayout();
    void translatorIsKeptUntilTheLayoutChanges();
    void namesFollowTheGroup();
    void registersOnceAndGivesBack();
    void invalidCombinationEndsUnregistered();
    void combinationOfAnotherProgramIsRefused();
    void findsByIdentifier();
    void carbonEventsReachTheAction();
    void inconsistentEventsThrow_data();
    void inconsistentEventsThrow();
    void applicationEventsServeOldFrameworks();
    void panelRecordsKeyPresses_data();
    void panelRecordsKeyPresses();
    void panelTakesShortcutsAndModifiersAloneRecordNothing();
    void modalRunReturnsCode_data();
    void modalRunReturnsCode();
    void modalRunRegistersHotKey();
    void sheetTellsTargetOnce();
    void sheetGoesWithItsWindow();
    void panelSpeaksTheUsersLanguage();
};

void HotKeysTest::init()
{
    QVERIFY(setLayout(u"us"_s));
    QTRY_COMPARE(KeyboardLayout::current()->characterOnKey(0x06), u"z"_s);
}

void HotKeysTest::namesFollowTheLayout_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<int>("keyCode");
    QTest::addColumn<QString>("character");
    QTest::newRow("us z") << u"us"_s << 0x06 << u"z"_s;
    QTest::newRow("de z") << u"de"_s << 0x10 << u"z"_s;
    QTest::newRow("de \u00F6") << u"de"_s << 0x29 << u"\u00F6"_s;
    QTest::newRow("de dead circumflex") << u"de"_s << 0x32 << u"^"_s;
    QTest::newRow("de keypad separator") << u"de"_s << 0x41 << u","_s;
    QTest::newRow("fr a") << u"fr"_s << 0x0C << u"a"_s;
    QTest::newRow("fr first digit key") << u"fr"_s << 0x12 << u"&"_s;
}

void HotKeysTest::namesFollowTheLayout()
{
    QFETCH(QString, layout);
    QFETCH(int, keyCode);
    QFETCH(QString, character);
    QVERIFY(setLayout(layout));
    QTRY_COMPARE(PTKeyCodeTranslator::currentTranslator()->translateKeyCode(qint16(keyCode)), character);
    const std::optional<int> key = KeyboardLayout::current()->keyWithCharacter(character[0].toUpper());
    QVERIFY(key);
    QCOMPARE(KeyboardLayout::current()->characterOnKey(*key), character);
}

void HotKeysTest::translatorIsKeptUntilTheLayoutChanges()
{
    const auto before = PTKeyCodeTranslator::currentTranslator();
    QCOMPARE(PTKeyCodeTranslator::currentTranslator(), before);
    QCOMPARE(before->description(), u"PTKeyCodeTranslator layout=English (US) (uchr)"_s);
    QVERIFY(setLayout(u"de"_s));
    QTRY_VERIFY(PTKeyCodeTranslator::currentTranslator() != before);
    QTRY_COMPARE(
        PTKeyCodeTranslator::currentTranslator()->description(), u"PTKeyCodeTranslator layout=German (uchr)"_s);
}

void HotKeysTest::namesFollowTheGroup()
{
    QVERIFY(setLayout(u"us,de,fr"_s));
    quint8 group = 0;
    for (const QString& character : {u"z"_s, u"y"_s, u"w"_s}) {
        lockGroup(group++);
        QTRY_COMPARE(PTKeyCodeTranslator::currentTranslator()->translateKeyCode(0x06), character);
    }
    // Fewer layouts than the number of the one in use: the server goes back to one that is there.
    QVERIFY(setLayout(u"de"_s));
    QTRY_COMPARE(PTKeyCodeTranslator::currentTranslator()->translateKeyCode(0x06), u"y"_s);
    lockGroup(0);
}

void HotKeysTest::registersOnceAndGivesBack()
{
    PTHotKeyCenter center;
    HotKeyGrabs otherProgram;
    const auto key = hotKey(u"one"_s, {0x28, command | shift});
    QVERIFY(center.registerHotKey(key));
    QVERIFY(center.registerHotKey(key));
    QCOMPARE(center.allHotKeys(), QList{key});
    QVERIFY(!otherProgram.registerHotKey(0x28, command | shift));
    center.unregisterHotKey(key);
    center.unregisterHotKey(key);
    QVERIFY(center.allHotKeys().isEmpty());
    std::optional<HotKeyReference> granted;
    QTRY_VERIFY(granted || (granted = otherProgram.registerHotKey(0x28, command | shift)));
}

void HotKeysTest::invalidCombinationEndsUnregistered()
{
    PTHotKeyCenter center;
    const auto key = hotKey(u"one"_s, {0x28, command});
    QVERIFY(center.registerHotKey(key));
    key->setKeyCombo({});
    QVERIFY(key->description().endsWith(u"(None)>"_s));
    QVERIFY(center.registerHotKey(key));
    QVERIFY(center.allHotKeys().isEmpty());
}

void HotKeysTest::combinationOfAnotherProgramIsRefused()
{
    PTHotKeyCenter center;
    HotKeyGrabs otherProgram;
    const auto reference = otherProgram.registerHotKey(0x23, command);
    QVERIFY(reference);
    QVERIFY(!otherProgram.registerHotKey(0x23, command));
    const auto key = hotKey(u"one"_s, {0x23, command});
    QVERIFY(!center.registerHotKey(key));
    QVERIFY(center.allHotKeys().isEmpty());
    otherProgram.unregisterHotKey(*reference);
    QTRY_VERIFY(center.registerHotKey(key));
}

void HotKeysTest::findsByIdentifier()
{
    PTHotKeyCenter center;
    const auto named = hotKey(u"one"_s, {0x00, command});
    const auto nameless = hotKey({}, {0x01, command});
    QVERIFY(center.registerHotKey(named) && center.registerHotKey(nameless));
    QCOMPARE(center.hotKeyWithIdentifier(u"one"_s), named);
    QCOMPARE(center.hotKeyWithIdentifier(u"two"_s), nullptr);
    QCOMPARE(center.hotKeyWithIdentifier({}), nullptr);
}

void HotKeysTest::carbonEventsReachTheAction()
{
    PTHotKeyCenter center;
    const auto key = hotKey(u"one"_s, {0x00, command});
    QList<PTHotKey*> invoked;
    key->setTarget(this);
    key->setAction([&invoked](PTHotKey* sender) { invoked.append(sender); });
    QVERIFY(center.registerHotKey(key));
    CarbonEvent event;
    QVERIFY(center.sendCarbonEvent(event) != 0); // about no hot key
    event.directObject = {0x57713448, quint32(center._carbonHotKeyForHotKey(key))};
    event.kind = CarbonEvent::hotKeyPressed;
    QCOMPARE(center.sendCarbonEvent(event), 0);
    event.kind = CarbonEvent::hotKeyReleased;
    QCOMPARE(center.sendCarbonEvent(event), 0);
    QCOMPARE(invoked, QList{key.get()});
}

void HotKeysTest::inconsistentEventsThrow_data()
{
    QTest::addColumn<quint32>("eventClass");
    QTest::addColumn<quint32>("kind");
    QTest::addColumn<quint32>("signature");
    QTest::addColumn<quint32>("id");
    QTest::addColumn<double>("framework");
    QTest::addColumn<QString>("description");
    const quint32 keyboard = CarbonEvent::keyboardClass;
    QTest::newRow("old framework") << keyboard << 5U << 0x57713448U << 1U << 620.9 << u""_s;
    QTest::newRow("class") << 1U << 5U << 0x57713448U << 1U << 621.0 << u"Unknown event class"_s;
    QTest::newRow("signature") << keyboard << 5U << 1U << 1U << 621.0 << u"Invalid hot key id"_s;
    QTest::newRow("id") << keyboard << 5U << 0x57713448U << 0U << 621.0 << u"Invalid hot key id"_s;
    QTest::newRow("kind") << keyboard << 7U << 0x57713448U << 1U << 621.0 << u"Unknown event kind"_s;
}

void HotKeysTest::inconsistentEventsThrow()
{
    QFETCH(quint32, eventClass);
    QFETCH(quint32, kind);
    QFETCH(quint32, signature);
    QFETCH(quint32, id);
    QFETCH(double, framework);
    PTHotKeyCenter center(nullptr, framework);
    try {
        center.sendCarbonEvent({eventClass, kind, HotKeyIdentifier{signature, id}});
        QFAIL("nothing was thrown");
    } catch (const InternalInconsistency& inconsistency) {
        QTEST(inconsistency.description(), "description");
    }
}

void HotKeysTest::applicationEventsServeOldFrameworks()
{
    for (const double framework : {620.0, 824.0}) {
        PTHotKeyCenter center(nullptr, framework);
        const auto key = hotKey(u"one"_s, {0x00, command});
        int invoked = 0;
        key->setTarget(this);
        key->setAction([&invoked](PTHotKey*) { ++invoked; });
        QVERIFY(center.registerHotKey(key));
        const auto reference = quintptr(center._carbonHotKeyForHotKey(key));
        center.sendEvent({14, 6, 0});
        center.sendEvent({14, 6, reference + 1});
        center.sendEvent({14, 9, reference});
        center.sendEvent({13, 6, reference});
        QCOMPARE(invoked, 0);
        center.sendEvent({14, 6, reference});
        QCOMPARE(invoked, framework == 620.0 ? 1 : 0);
    }
}

void HotKeysTest::panelRecordsKeyPresses_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("qtModifiers");
    QTest::addColumn<quint32>("scanCode");
    QTest::addColumn<PTKeyCombo>("combo");
    const auto row = [](const char* name, int key, Qt::KeyboardModifiers modifiers, quint32 scanCode,
                         const PTKeyCombo& combo) {
        QTest::newRow(name) << key << int(modifiers) << scanCode << combo;
    };
    row("command-shift-K", Qt::Key_K, Qt::MetaModifier | Qt::ShiftModifier, 45, {0x28, 0x300});
    row("option-control-K", Qt::Key_K, Qt::AltModifier | Qt::ControlModifier, 45, {0x28, 0x1800});
    row("without modifiers", Qt::Key_K, Qt::NoModifier, 45, {0x28, 0});
    row("Tab", Qt::Key_Tab, Qt::NoModifier, 23, {0x30, 0});
    row("shift-Tab", Qt::Key_Backtab, Qt::ShiftModifier, 23, {0x30, 0x200});
    row("Return", Qt::Key_Return, Qt::NoModifier, 36, {0x24, 0});
    row("Escape", Qt::Key_Escape, Qt::NoModifier, 9, {0x35, 0});
    row("space bar", Qt::Key_Space, Qt::ControlModifier, 65, {0x31, 0x1000});
    row("function key", Qt::Key_F5, Qt::MetaModifier, 71, {0x60, 0x8100});
    row("mnemonic of a button", Qt::Key_O, Qt::AltModifier, 32, {0x1F, 0x800});
    row("letter of an on-screen keyboard", Qt::Key_Z, Qt::MetaModifier, 0, {0x06, 0x100});
    row("Home of an on-screen keyboard", Qt::Key_Home, Qt::MetaModifier, 0, {0x73, 0x8100});
}

void HotKeysTest::panelRecordsKeyPresses()
{
    QFETCH(int, key);
    QFETCH(int, qtModifiers);
    QFETCH(quint32, scanCode);
    QFETCH(PTKeyCombo, combo);
    PTKeyComboPanel panel;
    panel.runSheeetForModalWindow_target(nullptr, nullptr);
    QVERIFY(panel.mKeyBcaster->hasFocus() || panel.window()->focusWidget() == panel.mKeyBcaster);
    pressKey(panel.mKeyBcaster, key, Qt::KeyboardModifiers(qtModifiers), scanCode);
    QCOMPARE(panel.keyCombo(), combo);
    QCOMPARE(panel.mComboField->text(), combo.description());
    // Where nothing has the focus the window gets the key.
    panel.setKeyCombo({});
    pressKey(panel.window(), key, Qt::KeyboardModifiers(qtModifiers), scanCode);
    QCOMPARE(panel.keyCombo(), combo);
    QVERIFY(panel.window()->isVisible());
}

void HotKeysTest::panelTakesShortcutsAndModifiersAloneRecordNothing()
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

void HotKeysTest::modalRunReturnsCode_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("code");
    QTest::addColumn<bool>("cleared");
    QTest::newRow("OK") << u"OK"_s << 1 << false;
    QTest::newRow("Cancel") << u"Cancel"_s << 0 << false;
    QTest::newRow("Clear") << u"Clear"_s << 1 << true;
}

void HotKeysTest::modalRunReturnsCode()
{
    QFETCH(QString, button);
    QFETCH(int, code);
    QFETCH(bool, cleared);
    PTKeyComboPanel panel;
    panel.setKeyBindingName(u"Pause/Resume"_s);
    const ModalDriver driver([&](QWidget* window) {
        QVERIFY(panel.mTitleField->text().contains(u"Pause/Resume"_s));
        pressKey(window->focusWidget(), Qt::Key_J, Qt::MetaModifier, 44);
        pressKey(window->focusWidget(), Qt::Key_K, Qt::MetaModifier, 45);
        ModalDriver::click(button)(window);
    });
    QCOMPARE(panel.runModal(), code);
    QVERIFY(!panel.window()->isVisible());
    QCOMPARE(panel.keyCombo(), cleared ? PTKeyCombo() : PTKeyCombo(0x28, command));
}

void HotKeysTest::modalRunRegistersHotKey()
{
    const auto key = hotKey(u"one"_s, {});
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

void HotKeysTest::sheetTellsTargetOnce()
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

void HotKeysTest::sheetGoesWithItsWindow()
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

void HotKeysTest::panelSpeaksTheUsersLanguage()
{
    QLocale::setDefault(QLocale::German);
    Bundle::registerBundle(u"com.blipsy.prefpanel"_s, QStringLiteral(BLIPSY_TEST_BUNDLE));
    PTKeyComboPanel panel;
    QVERIFY(panel.window()->findChild<QPushButton*>(u"cancelButton"_s)->text().contains(u"Abbrechen"_s));
    panel.setKeyBindingName(u"Pause"_s);
    QCOMPARE(panel.mTitleField->text(), u"Drücken Sie die Tasten für „Pause“."_s);
}

QTEST_MAIN(HotKeysTest)
#include "HotKeysTest.moc"
