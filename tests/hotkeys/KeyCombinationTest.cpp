// SPDX-License-Identifier: MIT
#include <PTHotKeysLib/src/PTKeyBroadcaster.h>
#include <PTHotKeysLib/src/PTKeyCodeTranslator.h>
#include <PTHotKeysLib/src/PTKeyCombo.h>
#include <platform/desktop/Bundle.h>
#include <platform/keyboard/VirtualKeyCodes.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <DataTable.h>

using namespace Qt::StringLiterals;
using PropertyList::Dictionary;
using PropertyList::Value;

class KeyCombinationTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase()
    {
        const QString resources = m_bundle.path() + u"/Contents/Resources"_s;
        QVERIFY(QDir().mkpath(resources));
        QVERIFY(QFile::copy(QFINDTESTDATA("../../resources/PTKeyCodes.plist"), resources + u"/PTKeyCodes.plist"_s));
        Bundle::registerBundle(m_bundle.path());
    }

    void readsStoredForm_data()
    {
        const DataTable<PropertyList::DictionaryPointer, PTKeyCombo> row("stored", "combo");
        const QString code = u"keyCode"_s;
        const QString modifiers = u"modifiers"_s;
        row("none", {}, {});
        row("empty", Dictionary::create(), {});
        row("complete", Dictionary::create({{code, 35}, {modifiers, 2304}}), {35, 2304});
        row("no modifiers", Dictionary::create({{code, 0}, {modifiers, 0}}), {0, -1});
        row("no key code", Dictionary::create({{modifiers, 256}}), {0, 256});
        row("negative key code", Dictionary::create({{code, -7}, {modifiers, 256}}), {-1, 256});
        row("text", Dictionary::create({{code, u"12"_s}, {modifiers, u"256"_s}}), {12, 256});
        row("other types", Dictionary::create({{code, QByteArray("5")}, {modifiers, Dictionary::create()}}), {0, -1});
        row("too great", Dictionary::create({{code, qint64(1) << 40}, {modifiers, 256}}),
            {std::numeric_limits<qint32>::max(), 256});
    }

    void readsStoredForm()
    {
        const auto [stored, combo] = currentRow<PropertyList::DictionaryPointer, PTKeyCombo>();
        const PTKeyCombo read = PTKeyCombo::initWithPlistRepresentation(stored);
        QCOMPARE(read.keyCode(), combo.keyCode());
        QCOMPARE(read.modifiers(), combo.modifiers());
    }

    void storedFormRoundTrips()
    {
        const PTKeyCombo combo(40, 0x1B00);
        const PropertyList::DictionaryPointer stored = combo.plistRepresentation();
        QCOMPARE(stored->keys(), QStringList({u"keyCode"_s, u"modifiers"_s}));
        QCOMPARE(stored->value(u"keyCode"), Value(40));
        QVERIFY(PTKeyCombo::initWithPlistRepresentation(stored).isEqual(combo));
        QVERIFY(&combo.copyWithZone() == &combo);
    }

    void validityAndText_data()
    {
        const DataTable<PTKeyCombo, bool, QString> row("combo", "valid", "text");
        row("clear", PTKeyCombo::clearKeyCombo(), false, u"(None)"_s);
        row("without modifiers", {0, 0}, false, u"(None)"_s);
        row("missing modifiers", {5, -1}, false, u"(None)"_s);
        row("modifiers without key", {-1, 0x100}, false, u"(None)"_s);
        row("letter, the first key", {0x00, 0x300}, true, u"\u2318\u21E7A"_s);
        row("all modifiers, in fixed order", {0x00, 0x1B00}, true, u"\u2318\u2325^\u21E7A"_s);
        row("shift, option, control", {0x00, 0x1A00}, true, u"\u2325^\u21E7A"_s);
        row("function key, which shows no modifier", {0x60, 0x8000}, true, u"F5"_s);
        row("named key", {0x74, 0x8100}, true, u"\u2318Page Up"_s);
        row("keypad digit", {0x59, 0x1000}, true, u"^Keypad 7"_s);
        row("no such key", {0x6C, 0x100}, true, u"\u2318"_s);
        row("key code beyond all keys", {30000, 0x100}, true, u"\u2318"_s);
    }

    void validityAndText()
    {
        const auto [combo, valid] = currentRow<PTKeyCombo, bool>();
        QCOMPARE(combo.isValidHotKeyCombo(), valid);
        QCOMPARE(combo.isClearCombo(), qstrcmp(QTest::currentDataTag(), "clear") == 0);
        QTEST(combo.description(), "text");
    }

    void legacyNames()
    {
        const auto names = Dictionary::create({{u"53"_s, u"esc"_s}});
        QCOMPARE(PTKeyCombo::_stringForKeyCode_legacyKeyCodeMap(53, names), u"esc"_s);
        QCOMPARE(PTKeyCombo::_stringForKeyCode_legacyKeyCodeMap(122, names), u"7A"_s);
        QCOMPARE(PTKeyCombo::_stringForKeyCode_legacyKeyCodeMap(53, {}), u"35"_s);
    }

    void malformedTablesGiveCharacters()
    {
        const auto wrongTypes = Dictionary::create({{u"unmappedKeys"_s, 7}, {u"padKeys"_s, u"83"_s}});
        QCOMPARE(PTKeyCombo::_stringForKeyCode_newKeyCodeMap(0x53, wrongTypes), u"1"_s);
        QCOMPARE(PTKeyCombo::_stringForKeyCode_newKeyCodeMap(0x06, Dictionary::create()), u"Z"_s);
    }

    void translatesModifierFlags_data()
    {
        const DataTable<quint32, quint32> row("flags", "modifiers");
        row("none", 0U, 0U);
        row("command, shift", 0x120000U, 0x300U);
        row("option, control, function", 0x8C0000U, 0x9800U);
        row("caps lock and keypad are dropped", 0x310000U, 0x100U);
    }

    void translatesModifierFlags()
    {
        QFETCH(quint32, flags);
        QTEST(PTKeyBroadcaster::cocoaModifiersAsCarbonModifiers(flags), "modifiers");
    }

    void keyCodesMapBothWays()
    {
        int keys = 0;
        for (int code = -1; code <= VirtualKeyCodes::count; ++code) {
            if (const auto keycode = VirtualKeyCodes::xkbKeycode(code)) {
                QCOMPARE(VirtualKeyCodes::fromXkbKeycode(*keycode), code);
                ++keys;
            }
        }
        QCOMPARE(keys, 121);
        QCOMPARE(VirtualKeyCodes::fromXkbKeycode(107), 0x69); // Print stands where F13 was
        QCOMPARE(VirtualKeyCodes::fromXkbKeycode(0), std::nullopt);
        QCOMPARE(VirtualKeyCodes::fromXkbKeycode(172), std::nullopt); // a media key
    }

    void everyKeyHasAName()
    {
        // JIS_Yen and JIS_Underscore are on no keyboard with the layout in use here; the keypad's comma gives a
        // character.
        for (int code = 0; code < VirtualKeyCodes::count; ++code) {
            if (VirtualKeyCodes::xkbKeycode(code) && code != 0x5D && code != 0x5E) {
                const QString name = PTKeyCombo::_stringForKeyCode(qint16(code));
                QVERIFY2(
                    !name.isEmpty() && name[0].isPrint() && name[0] != u' ', qPrintable(QString::number(code, 16)));
            }
        }
    }

private:
    QTemporaryDir m_bundle;
};

QTEST_MAIN(KeyCombinationTest)
#include "KeyCombinationTest.moc"
