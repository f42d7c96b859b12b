// SPDX-License-Identifier: MIT
#include <PTHotKeysLib/src/InternalInconsistency.h>
#include <PTHotKeysLib/src/PTHotKeyCenter.h>
#include <PTHotKeysLib/src/PTKeyCodeTranslator.h>
#include <platform/desktop/Bundle.h>
#include <platform/keyboard/HotKeyGrabs.h>
#include <platform/keyboard/SessionKeyboard.h>
#include <platform/keyboard/XkbProtocol.h>

#include <QTest>

#include <DataTable.h>
#include <Programs.h>

#include <cstdlib>

using namespace Qt::StringLiterals;
using Programs::setLayout;

namespace {

constexpr int command = 0x100;
constexpr int shift = 0x200;

PTHotKey::Pointer hotKey(const QString& identifier, const PTKeyCombo& combo)
{
    return std::make_shared<PTHotKey>(identifier, combo);
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

/// A client of the server that wants keys together with Super.
class OtherProgram final
{
public:
    bool grabs(quint8 keycode) const
    {
        const auto request = xcb_grab_key_checked(
            m_connection.get(), 0, m_root, XCB_MOD_MASK_4, keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        xcb_generic_error_t* const error = xcb_request_check(m_connection.get(), request);
        std::free(error);
        return error == nullptr;
    }

private:
    std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)> m_connection{
        xcb_connect(nullptr, nullptr), xcb_disconnect};
    quint32 m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data->root;
};

} // namespace

class HotKeysTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase() { Bundle::registerBundle(QStringLiteral(BLIPSY_TEST_BUNDLE)); }

    void init()
    {
        QVERIFY(setLayout(u"us"_s));
        QTRY_COMPARE(KeyboardLayout::current()->characterOnKey(0x06), u"z"_s);
    }

    void namesFollowTheLayout_data()
    {
        const DataTable<QString, int, QString> row("layout", "keyCode", "character");
        row("us z", u"us"_s, 0x06, u"z"_s);
        row("de z", u"de"_s, 0x10, u"z"_s);
        row("de \u00F6", u"de"_s, 0x29, u"\u00F6"_s);
        row("de keypad separator", u"de"_s, 0x41, u","_s);
        row("fr a", u"fr"_s, 0x0C, u"a"_s);
        row("fr first digit key", u"fr"_s, 0x12, u"&"_s);
    }

    void namesFollowTheLayout()
    {
        const auto [layout, keyCode, character] = currentRow<QString, int, QString>();
        QVERIFY(setLayout(layout));
        QTRY_COMPARE(PTKeyCodeTranslator::currentTranslator()->translateKeyCode(qint16(keyCode)), character);
        const std::optional<int> key = KeyboardLayout::current()->keyWithCharacter(character[0].toUpper());
        QVERIFY(key);
        QCOMPARE(KeyboardLayout::current()->characterOnKey(*key), character);
    }

    void deadKeysChangeWhatTheNextKeyGives()
    {
        QVERIFY(setLayout(u"de"_s));
        QTRY_COMPARE(KeyboardLayout::current()->characterOnKey(0x32), u"^"_s);
        const auto translator = PTKeyCodeTranslator::currentTranslator();
        constexpr qint16 circumflex = 0x32;
        constexpr qint16 acute = 0x18;
        const QList<std::pair<qint16, QString>> presses{{circumflex, {}}, {0x00, u"â"_s}, {0x00, u"a"_s},
            {circumflex, {}}, {0x0B, u"^"_s}, {0x0B, u"b"_s}, {acute, {}}, {acute, u"´"_s}, {0x0E, u"e"_s},
            {circumflex, {}}, {acute, u"^"_s}, {0x0E, u"é"_s}};
        for (const auto& [key, character] : presses) {
            QCOMPARE(translator->translateKeyCode(key), character);
        }
        // Names are kept, but not those that a dead key had a part in.
        const QStringList names{PTKeyCombo(0x00, command).description(), PTKeyCombo(circumflex, command).description(),
            PTKeyCombo(0x00, command).description(), PTKeyCombo(0x00, command).description()};
        QCOMPARE(names, QStringList({u"⌘A"_s, u"⌘"_s, u"⌘Â"_s, u"⌘A"_s}));
    }

    void layoutNeedsNoKeyboardDataFolder()
    {
        qputenv("XKB_CONFIG_ROOT", "/nowhere");
        SessionKeyboard keyboard(nullptr);
        QCOMPARE(keyboard.layout()->characterOnKey(0x06), u"z"_s);
        qunsetenv("XKB_CONFIG_ROOT");
    }

    void translatorIsKeptUntilTheLayoutChanges()
    {
        const auto before = PTKeyCodeTranslator::currentTranslator();
        QCOMPARE(PTKeyCodeTranslator::currentTranslator(), before);
        QCOMPARE(before->description(), u"PTKeyCodeTranslator layout=English (US) (uchr)"_s);
        QVERIFY(setLayout(u"de"_s));
        QTRY_VERIFY(PTKeyCodeTranslator::currentTranslator() != before);
        QTRY_COMPARE(
            PTKeyCodeTranslator::currentTranslator()->description(), u"PTKeyCodeTranslator layout=German (uchr)"_s);
    }

    void namesFollowTheGroup()
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

    void registersOnceAndGivesBack()
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

    void invalidCombinationEndsUnregistered()
    {
        PTHotKeyCenter center;
        const auto key = hotKey(u"one"_s, {0x28, command});
        QVERIFY(center.registerHotKey(key));
        key->setKeyCombo({});
        QVERIFY(key->description().endsWith(u"(None)>"_s));
        QVERIFY(center.registerHotKey(key));
        QVERIFY(center.allHotKeys().isEmpty());
    }

    void combinationOfAnotherProgramIsRefused()
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

    void everyKeyOfACodeIsReserved_data()
    {
        const DataTable<int, quint8, quint8> row("keyCode", "pressed", "other");
        row("F13, Print", 0x69, 191, 107);
        row("F14, Scroll Lock", 0x6B, 192, 78);
        row("F15, Pause", 0x71, 193, 127);
        row("Insert, Help", 0x72, 118, 146);
    }

    void everyKeyOfACodeIsReserved()
    {
        const auto [keyCode, pressed, other] = currentRow<int, quint8, quint8>();
        OtherProgram otherProgram;
        QVERIFY(HotKeyGrabs::arePossible());
        {
            HotKeyGrabs grabs;
            QVERIFY(grabs.registerHotKey(keyCode, command));
            QVERIFY(!otherProgram.grabs(pressed) && !otherProgram.grabs(other));
        }
        // What another program holds does not take the other key away.
        QTRY_VERIFY(otherProgram.grabs(other));
        HotKeyGrabs grabs;
        const auto reference = grabs.registerHotKey(keyCode, command);
        QVERIFY(reference && !otherProgram.grabs(pressed));
        grabs.unregisterHotKey(*reference);
        QTRY_VERIFY(otherProgram.grabs(pressed));
        QVERIFY(!grabs.registerHotKey(keyCode, command));
    }

    void findsByIdentifier()
    {
        PTHotKeyCenter center;
        const auto named = hotKey(u"one"_s, {0x00, command});
        const auto nameless = std::make_shared<PTHotKey>(std::nullopt, PTKeyCombo(0x01, command));
        QVERIFY(center.registerHotKey(named) && center.registerHotKey(nameless));
        QCOMPARE(center.hotKeyWithIdentifier(u"one"_s), named);
        QCOMPARE(center.hotKeyWithIdentifier(u"two"_s), nullptr);
        QCOMPARE(center.hotKeyWithIdentifier(std::nullopt), nullptr);
        QCOMPARE(center.hotKeyWithIdentifier(u""_s), nullptr);
    }

    void carbonEventsReachTheAction()
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

    void inconsistentEventsThrow_data()
    {
        const DataTable<CarbonEvent, double, QString> row("event", "framework", "description");
        const quint32 keyboard = CarbonEvent::keyboardClass;
        const HotKeyIdentifier first{0x57713448, 1};
        row("old framework", {keyboard, 5, first}, 620.9, u""_s);
        row("class", {1, 5, first}, 621.0, u"Unknown event class"_s);
        row("signature", {keyboard, 5, HotKeyIdentifier{1, 1}}, 621.0, u"Invalid hot key id"_s);
        row("id", {keyboard, 5, HotKeyIdentifier{0x57713448, 0}}, 621.0, u"Invalid hot key id"_s);
        row("kind", {keyboard, 7, first}, 621.0, u"Unknown event kind"_s);
    }

    void inconsistentEventsThrow()
    {
        const auto [event, framework] = currentRow<CarbonEvent, double>();
        PTHotKeyCenter center(nullptr, framework);
        try {
            center.sendCarbonEvent(event);
            QFAIL("nothing was thrown");
        } catch (const InternalInconsistency& inconsistency) {
            QTEST(inconsistency.description(), "description");
        }
    }

    void applicationEventsServeOldFrameworks()
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
};

QTEST_MAIN(HotKeysTest)
#include "HotKeysTest.moc"
