// SPDX-License-Identifier: MIT
#include <PTHotKeysLib/src/PTKeyComboPanel.h>
#include <core/Settings.h>
#include <helper/menu/HotKeys.h>
#include <helper/menu/UserCommands.h>
#include <platform/keyboard/HotKeyGrabs.h>
#include <prefs/OptionsTab.h>

#include <QAction>
#include <QApplication>
#include <QHelpEvent>
#include <QSignalSpy>
#include <QTest>

#include <Programs.h>
#include <WindowManager.h>

using namespace Qt::StringLiterals;
using Programs::press;
using Programs::run;
using Programs::setLayout;

namespace {

constexpr int keyP = 0x23;
constexpr int keyK = 0x28;
constexpr int commandOption = 0x900;

void store(const QString& name, int keyCode)
{
    Setting<PropertyList::DictionaryPointer>{name}.store(PTKeyCombo(keyCode, commandOption).plistRepresentation());
}

/// What the helper's menu says about hot keys.
QStringList menuNotices()
{
    QStringList notices;
    for (const QWidget* const widget : QApplication::allWidgets()) {
        for (const QAction* const action : widget->actions()) {
            if (action->isVisible() && action->text().contains(u"another program"_s)) {
                notices.append(action->text());
            }
        }
    }
    return notices;
}

bool saysItIsHeld(QPushButton* button)
{
    QHelpEvent help(QEvent::ToolTip, {}, {});
    QApplication::sendEvent(button, &help);
    return button->toolTip().startsWith(u"Another program holds"_s);
}

} // namespace

class HelperHotKeysTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase()
    {
        QVERIFY(setLayout(u"us"_s));
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

    void panelThatRecordsGetsThemInstead()
    {
        const WindowManager manager;
        HotKeys hotKeys;
        const QSignalSpy paused(&hotKeys, &HotKeys::pauseRequested);
        hotKeys.readSettings();
        PTKeyComboPanel panel;
        panel.runSheeetForModalWindow_target(nullptr, nullptr);
        QTRY_VERIFY_WITH_TIMEOUT(panel.mKeyBcaster->hasFocus(), 20'000);
        QVERIFY(press(u"super+alt+p"_s));
        QTRY_COMPARE(panel.keyCombo(), PTKeyCombo(keyP, commandOption));
        QVERIFY(paused.isEmpty());
        panel.cancel();
        QTRY_VERIFY(press(u"super+alt+p"_s) && !paused.isEmpty());
    }

    void layoutMayMoveTheModifiers()
    {
        HotKeys hotKeys;
        const QSignalSpy paused(&hotKeys, &HotKeys::pauseRequested);
        hotKeys.readSettings();
        QVERIFY(run(
            u"sh"_s, {u"-c"_s, u"xkbcomp -w 0 $DISPLAY - | sed 's/_map Mod4/_map Mod3/' | xkbcomp -w 0 - $DISPLAY"_s}));
        QTRY_VERIFY(press(u"super+alt+p"_s) && !paused.isEmpty());
        QVERIFY(setLayout(u"us"_s));
    }

    /// In the helper's menu, and by the tool tip of the pane's button.
    void refusedOnesAreTold()
    {
        HotKeyGrabs otherProgram;
        std::optional<HotKeyReference> granted;
        QTRY_VERIFY(granted || (granted = otherProgram.registerHotKey(keyK, commandOption)));
        store(u"Add a Clipping"_s, keyK);
        OptionsTab pane;
        pane.controller().awakeFromNib();
        {
            UserCommands helper;
            helper.readSettings();
            QCOMPARE(menuNotices(), QStringList{u"Hot keys of another program: Add a Clipping"_s});
            QVERIFY(saysItIsHeld(pane.form().addHotKeyButton));
            QVERIFY(!saysItIsHeld(pane.form().pauseHotKeyButton));
            otherProgram.unregisterHotKey(*granted);
            QTRY_VERIFY((helper.readSettings(), menuNotices().isEmpty()));
            QVERIFY(!saysItIsHeld(pane.form().addHotKeyButton));
        }
        QCOMPARE(Settings::refusedHotKeys.value(), QStringList());
    }
};

int main(int argc, char** argv)
{
    // The offscreen platform's windows get no keys of the X server.
    qputenv("QT_QPA_PLATFORM", "xcb");
    const QApplication application(argc, argv);
    HelperHotKeysTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "HelperHotKeysTest.moc"
