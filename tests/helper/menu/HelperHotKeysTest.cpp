// SPDX-License-Identifier: MIT
#include <PTHotKeysLib/src/PTKeyCombo.h>
#include <core/Settings.h>
#include <helper/menu/HotKeys.h>
#include <platform/keyboard/HotKeyGrabs.h>

#include <QProcess>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int keyP = 0x23;
constexpr int keyK = 0x28;
constexpr int commandOption = 0x900;

/// Runs a program to its end. A server that is slow fails the test; it does not stall it.
bool run(const QString& program, const QStringList& arguments)
{
    constexpr int patience = 20'000;
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(program, arguments);
    return process.waitForFinished(patience) && process.exitCode() == 0;
}

bool press(const QString& keys)
{
    return run(u"xdotool"_s, {u"key"_s, keys});
}

void store(const QString& name, int keyCode)
{
    Setting<PropertyList::DictionaryPointer>{name}.store(PTKeyCombo(keyCode, commandOption).plistRepresentation());
}

} // namespace

class HelperHotKeysTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase()
    {
        QVERIFY(run(u"setxkbmap"_s, {u"us"_s}));
        store(u"Pause/Resume"_s, keyP);
    }

    void firesOnceForEachPress()
    {
        HotKeys hotKeys;
        const QSignalSpy paused(&hotKeys, &HotKeys::pauseRequested);
        hotKeys.readSettings();
        QVERIFY(press(u"super+alt+p"_s));
        QTRY_COMPARE(paused.size(), 1);
        // Longer than the server waits before it repeats a key, in its own time.
        QVERIFY(
            run(u"xdotool"_s, {u"keydown"_s, u"super+alt+p"_s, u"sleep"_s, u"1.2"_s, u"keyup"_s, u"super+alt+p"_s}));
        QVERIFY(press(u"Caps_Lock"_s) && press(u"super+alt+p"_s) && press(u"Caps_Lock"_s));
        QTRY_COMPARE(paused.size(), 3);
        QVERIFY(hotKeys.refused().isEmpty());
    }

    void heldHotKeysAreFree()
    {
        HotKeys hotKeys;
        hotKeys.readSettings();
        hotKeys.setHeld(true);
        HotKeyGrabs otherProgram;
        std::optional<HotKeyReference> granted;
        QTRY_VERIFY(granted || (granted = otherProgram.registerHotKey(keyP, commandOption)));
        const QSignalSpy typed(&otherProgram, &HotKeyGrabs::pressed);
        QVERIFY(press(u"super+alt+p"_s));
        QTRY_COMPARE(typed.size(), 1);
        otherProgram.unregisterHotKey(*granted);
    }

    void layoutMayMoveTheModifiers()
    {
        HotKeys hotKeys;
        const QSignalSpy paused(&hotKeys, &HotKeys::pauseRequested);
        hotKeys.readSettings();
        QVERIFY(run(
            u"sh"_s, {u"-c"_s, u"xkbcomp -w 0 $DISPLAY - | sed 's/_map Mod4/_map Mod3/' | xkbcomp -w 0 - $DISPLAY"_s}));
        QTRY_VERIFY(press(u"super+alt+p"_s) && !paused.isEmpty());
        QVERIFY(run(u"setxkbmap"_s, {u"us"_s}));
    }

    void refusedOnesAreTold()
    {
        HotKeyGrabs otherProgram;
        std::optional<HotKeyReference> granted;
        QTRY_VERIFY(granted || (granted = otherProgram.registerHotKey(keyK, commandOption)));
        store(u"Add a Clipping"_s, keyK);
        {
            HotKeys hotKeys;
            const QSignalSpy changed(&hotKeys, &HotKeys::refusedChanged);
            hotKeys.readSettings();
            QCOMPARE(hotKeys.refused(), QStringList{u"Add a Clipping"_s});
            QCOMPARE(Settings::refusedHotKeys.value(), QStringList{u"Add a Clipping"_s});
            otherProgram.unregisterHotKey(*granted);
            QTRY_VERIFY((hotKeys.readSettings(), hotKeys.refused().isEmpty()));
            QCOMPARE(changed.size(), 2);
        }
        QCOMPARE(Settings::refusedHotKeys.value(), QStringList());
    }
};

QTEST_MAIN(HelperHotKeysTest)
#include "HelperHotKeysTest.moc"
