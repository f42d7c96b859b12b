// SPDX-License-Identifier: MIT
#include <core/BYGlobals.h>
#include <core/HelperProcess.h>
#include <core/SharedNames.h>
#include <launcher/BYlauncher.h>
#include <platform/controls/Matrix.h>
#include <platform/desktop/Bundle.h>
#include <platform/desktop/LoginItemScript.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDir>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <DataTable.h>
#include <Files.h>
#include <NotificationRecorder.h>

#include <csignal>

using namespace Qt::StringLiterals;
using Files::contents;

namespace {

const QString startsPath = QDir::homePath() + u"/helper-starts"_s;
const QString loginItem = QDir::homePath() + u"/.config/autostart/BlipsyMenu.desktop"_s;
/// As the launcher waits before it starts the helper, and some more for that to have gone wrong.
constexpr int quietMilliseconds = 600;

QDBusConnectionInterface* bus()
{
    return QDBusConnection::sessionBus().interface();
}

bool helperRuns()
{
    return bus()->isServiceRegistered(BYGlobals::appID());
}

void endHelper(int signal)
{
    if (helperRuns()) {
        ::kill(pid_t(bus()->servicePid(BYGlobals::appID()).value()), signal);
    }
    QTRY_VERIFY(!helperRuns());
}

} // namespace

class BYlauncherTest final : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    QString m_bundle = m_folder.filePath(u"A \"50%\" $pane.prefPane"_s);
    QString m_program = m_bundle + u"/Contents/BlipsyMenu.app/Contents/MacOS/BlipsyMenu"_s;
    Matrix m_switch;
    std::unique_ptr<BYlauncher> m_launcher;

    qsizetype starts() const { return contents(startsPath).count('\n'); }

    /// Nothing more happens.
    void verifyQuiet(qsizetype expectedStarts)
    {
        QElapsedTimer timer;
        timer.start();
        QTRY_VERIFY(timer.elapsed() > quietMilliseconds);
        QCOMPARE(starts(), expectedStarts);
    }

private Q_SLOTS:

    void initTestCase()
    {
        auto* layout = new QHBoxLayout(&m_switch);
        layout->addWidget(new QRadioButton(u"On"_s));
        layout->addWidget(new QRadioButton(u"Off"_s));
        Bundle::registerBundle(m_bundle);
    }

    void init()
    {
        QDir().mkpath(QFileInfo(m_program).path());
        QFile::remove(m_program);
        QVERIFY(QFile::copy(QStringLiteral(STAND_IN_HELPER), m_program));
        BYGlobals::storeSetting(u"10012"_s, Settings::menuBuild.key);
        m_switch.setState_atRow_column(true, 0, 1);
        m_launcher = std::make_unique<BYlauncher>();
        m_launcher->onOffRadioButton = &m_switch;
        m_launcher->awakeFromNib();
    }

    void cleanup()
    {
        m_launcher.reset();
        endHelper(SIGKILL);
        qunsetenv("BLIPSY_STUBBORN");
        QFile::remove(startsPath);
        QFile::remove(loginItem);
    }

    void outdatedHelperIsReplaced_data()
    {
        const DataTable<PropertyList::Value, bool> row("build", "wasRunning");
        row("none yet", {}, false);
        row("empty", PropertyList::Value(u""_s), false);
        row("older, running", PropertyList::Value(u"10011"_s), true);
    }

    void outdatedHelperIsReplaced()
    {
        const auto [build, wasRunning] = currentRow<PropertyList::Value, bool>();
        if (wasRunning) {
            QVERIFY(HelperProcess::start());
            QTRY_VERIFY(helperRuns());
        }
        const qsizetype before = starts();
        BYGlobals::storeSetting(build, Settings::menuBuild.key);
        m_launcher->awakeFromNib();
        QTRY_COMPARE(starts(), before + 1);
        QTRY_VERIFY(helperRuns());
        QTRY_COMPARE(m_switch.selectedColumn(), 0);
        QVERIFY(QFile::exists(loginItem));
        QCOMPARE(BYGlobals::retrieveFromUserDefaults(Settings::menuBuild.key).integerValue(), 10012);
    }

    void currentHelperIsLeftAloneAndShown()
    {
        QVERIFY(HelperProcess::start());
        QTRY_VERIFY(helperRuns());
        m_launcher->awakeFromNib();
        QTRY_COMPARE(m_switch.selectedColumn(), 0);
        m_launcher->on(nullptr);
        verifyQuiet(1);
        QVERIFY(!QFile::exists(loginItem));
    }

    void clicksStartOnceAndStop()
    {
        NotificationRecorder heard;
        m_launcher->on(nullptr);
        m_launcher->on(nullptr);
        QTRY_VERIFY(helperRuns());
        QCOMPARE(contents(startsPath), "1\n");
        QTRY_COMPARE(m_switch.selectedColumn(), 0);
        const QByteArray program =
            "Exec=\"" + m_folder.path().toUtf8() + R"(/A \\"50%%\\" \\$pane.prefPane/Contents/BlipsyMenu.app)";
        QVERIFY2(contents(loginItem).contains(program), contents(loginItem).constData());
        m_launcher->on(nullptr);
        verifyQuiet(1);

        m_launcher->off(nullptr);
        QTRY_VERIFY(!helperRuns());
        QTRY_VERIFY(heard.names().contains(NotificationName::byeBye));
        QVERIFY(!QFile::exists(loginItem));
        m_launcher->on(nullptr);
        QTRY_VERIFY(helperRuns());
        QCOMPARE(starts(), 2);
    }

    void helperThatDoesNotQuitIsNotStartedTwice()
    {
        qputenv("BLIPSY_STUBBORN", "1");
        QVERIFY(HelperProcess::start());
        QTRY_VERIFY(helperRuns());
        BYGlobals::storeSetting({}, Settings::menuBuild.key);
        m_launcher->awakeFromNib();
        verifyQuiet(1);
        QVERIFY(!QFile::exists(loginItem));
    }

    void helperThatCannotRunIsToldInOneLine_data()
    {
        const DataTable<QString, bool> row("line", "isThere");
        row("missing", u"^cannot start .*/BlipsyMenu: there is no such file$"_s, false);
        row("not executable", u"^cannot start .*/BlipsyMenu: it is not executable$"_s, true);
    }

    void helperThatCannotRunIsToldInOneLine()
    {
        const auto [line, isThere] = currentRow<QString, bool>();
        QVERIFY(isThere ? QFile::setPermissions(m_program, QFile::ReadOwner) : QFile::remove(m_program));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(line));
        m_launcher->on(nullptr);
        QTRY_VERIFY(QFile::exists(loginItem));
        QCOMPARE(m_switch.selectedColumn(), 1);
    }

    void scriptsOfOtherWordsAreRefused_data()
    {
        const DataTable<QString> row("source");
        row("no such item", u"tell application \"System Events\"\ndelete login item \"None\"\nend tell"_s);
        row("outside tell", u"delete login item \"BlipsyMenu\""_s);
        row("other application", u"tell application \"Mail\"\ndelete login item \"BlipsyMenu\""_s);
        row("unknown variable",
            u"tell application \"System Events\"\nmake login item at end with properties {path:other, hidden:false}"_s);
        row("other words", u"do shell script \"true\""_s);
    }

    void scriptsOfOtherWordsAreRefused()
    {
        QFETCH(const QString, source);
        QVERIFY(!LoginItemScript::execute(source));
    }
};

QTEST_MAIN(BYlauncherTest)
#include "BYlauncherTest.moc"
