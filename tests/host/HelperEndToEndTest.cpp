// SPDX-License-Identifier: MIT
#include "Program.h"

#include <core/SharedNames.h>
#include <platform/plist/PropertyList.h>

#include <QApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QPlainTextEdit>
#include <QTemporaryDir>

#include <Files.h>
#include <NotificationRecorder.h>
#include <SoundFixtures.h>
#include <SoundServerControl.h>
#include <WindowManager.h>

using namespace Qt::StringLiterals;
using PropertyList::Array;
using PropertyList::Dictionary;
using SoundServerControl::Recording;

namespace {

const QString loginItem = QDir::homePath() + u"/.config/autostart/BlipsyMenu.desktop"_s;

bool helperRuns()
{
    return QDBusConnection::sessionBus().interface()->isServiceRegistered(helperIdentifier);
}

bool typeInto(const QString& window, const QString& text)
{
    return act({u"windowfocus"_s, window}) && act({u"type"_s, text});
}

/// What is left of the bytes that a terminal hands over one by one when BackSpace has taken others away.
QByteArray lineFrom(const QByteArray& bytes)
{
    QByteArray line;
    for (const char byte : bytes) {
        if (byte == '\b' || byte == '\x7f') {
            line.chop(1);
        } else {
            line.append(byte);
        }
    }
    return line;
}

/// Types @p text until @p isSeen: the helper may not listen yet.
template <typename Condition>
bool typeUntil(const QString& window, const QString& text, Condition isSeen)
{
    for (int attempt = 0; attempt < 10; ++attempt) {
        if (!typeInto(window, text)) {
            return false;
        }
        if (QTest::qWaitFor(isSeen, 2'000)) {
            return true;
        }
    }
    return false;
}

} // namespace

/// Pane and helper as a user starts them, who then types into other programs.
class HelperEndToEndTest final : public QObject
{
    Q_OBJECT

public:
    /// The text window is this program's own.
    static void initMain() { qputenv("QT_QPA_PLATFORM", "xcb"); }

private:
    QTemporaryDir m_folder;

    QString path(const QString& name) const { return m_folder.filePath(name); }

private Q_SLOTS:

    void initTestCase()
    {
        QVERIFY(Accessible::switchOn());
        Files::write(path(u"low.aif"_s), SoundFixtures::aiff(440, 0.3));
        const auto brb =
            Dictionary::create({{PhraseKey::phrase, u"brb"_s}, {PhraseKey::soundFilepath, path(u"low.aif"_s)}});
        const auto omw = Dictionary::create({{PhraseKey::phrase, u"omw"_s}, {PhraseKey::plainText, u"On my way."_s}});
        const auto root = Dictionary::create({{DocumentKey::clippings, Array::create({brb, omw})}});
        Files::write(path(u"test.blipsy"_s), PropertyList::write(root));
    }

    void phraseIsHeardUntilTheSwitchIsOff()
    {
        const WindowManager manager;
        Recording recording;
        NotificationRecorder bus;
        Program pane({u"--document"_s, path(u"test.blipsy"_s), u"--tab"_s, u"Options"_s});
        QVERIFY(pane.takeFocus());
        QTRY_VERIFY_WITH_TIMEOUT(helperRuns() && QFile::exists(loginItem), 20'000);

        QPlainTextEdit edit;
        edit.show();
        edit.setFocus();
        QVERIFY(QTest::qWaitForWindowExposed(&edit));
        const QString ours = QString::number(edit.winId());
        QVERIFY(typeUntil(ours, u"brb "_s, [&] { return recording.secondsOf(440) > 0.2; }));
        QTRY_VERIFY(edit.toPlainText().endsWith(u"brb "_s));
        QVERIFY(typeInto(ours, u"omw "_s));
        QTRY_VERIFY(edit.toPlainText().endsWith(u"brb On my way. "_s));

        QProcess terminal;
        terminal.start(
            u"xterm"_s, {u"-T"_s, u"terminal"_s, u"-e"_s, u"stty -icanon; cat >'%1'"_s.arg(path(u"typed"_s))});
        QVERIFY(terminal.waitForStarted());
        QVERIFY(act({u"search"_s, u"--sync"_s, u"--onlyvisible"_s, u"--name"_s, u"^terminal$"_s, u"windowfocus"_s}));
        recording.clear();
        QVERIFY(act({u"type"_s, u"brb "_s}));
        QTRY_VERIFY(recording.secondsOf(440) > 0.2);
        QVERIFY(act({u"type"_s, u"omw "_s}));
        QTRY_COMPARE(lineFrom(Files::contents(path(u"typed"_s))), "brb On my way. ");
        terminal.kill();
        terminal.waitForFinished();

        QVERIFY(bus.forgetAllPosted());
        QVERIFY(pane.press(u"radio button"_s, u"Off"_s));
        QTRY_VERIFY(bus.names().contains(NotificationName::byeBye));
        QTRY_VERIFY(!helperRuns() && !QFile::exists(loginItem));
        recording.clear();
        QVERIFY(typeInto(ours, u"brb "_s));
        QTRY_VERIFY(edit.toPlainText().endsWith(u"brb "_s));
        QVERIFY(!QTest::qWaitFor([&] { return recording.secondsOf(440) > 0; }, 300));
    }
};

QTEST_MAIN(HelperEndToEndTest)
#include "HelperEndToEndTest.moc"
