// SPDX-License-Identifier: MIT
#include "Program.h"

#include <core/BYGlobals.h>
#include <core/SharedNames.h>

#include <QTemporaryDir>

#include <DataTable.h>
#include <Files.h>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

struct Outcome
{
    int exitCode = -1;
    QString errors;
    qsizetype lines = 0;
};

/// Runs the program to its end, in an environment with @p changes.
Outcome run(const QStringList& arguments, const QMap<QString, QString>& changes)
{
    QProcess process;
    process.setProcessEnvironment(environmentWith(changes));
    process.start(QStringLiteral(BLIPSY_HOST), arguments);
    if (!process.waitForFinished(20'000) || process.exitStatus() != QProcess::NormalExit) {
        return {};
    }
    const QString errors = QString::fromUtf8(process.readAllStandardError());
    return {.exitCode = process.exitCode(), .errors = errors, .lines = errors.count(u'\n')};
}

QString documentInUse()
{
    return BYGlobals::retrieveFromUserDefaults(Settings::defaultFilePath.key).textValue();
}

} // namespace

class StartTest final : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    const QString m_document = m_folder.filePath(u"test.blipsy"_s);
    const QString m_other = m_folder.filePath(u"other.blipsy"_s);

private Q_SLOTS:

    void init()
    {
        const QByteArray empty = PropertyList::write(PropertyList::Dictionary::create());
        Files::write(m_document, empty);
        Files::write(m_other, empty);
    }

    void questionsAndFailuresNeedNoDisplay_data()
    {
        const DataTable<QStringList, int> row("arguments", "exitCode");
        row("help", {u"--help"_s}, 0);
        row("version", {u"--version"_s}, 0);
        row("plain start", {}, 1);
    }

    void questionsAndFailuresNeedNoDisplay()
    {
        const auto [arguments, exitCode] = currentRow<QStringList, int>();
        const Outcome outcome = run(arguments, {{u"DISPLAY"_s, u":987"_s}});
        QCOMPARE(outcome.exitCode, exitCode);
        QCOMPARE(outcome.lines, exitCode);
    }

    void secondStartHandsOver()
    {
        Program first({u"--document"_s, m_document});
        QVERIFY(first.takeFocus());
        QCOMPARE(run({u"--document"_s, m_other, u"--tab"_s, u"Events"_s}, {}).exitCode, 0);
        QTRY_COMPARE(documentInUse(), m_other);
        const Outcome wrongTab = run({u"--tab"_s, u"Nowhere"_s}, {});
        QCOMPARE(wrongTab.exitCode, 1);
        QVERIFY2(wrongTab.errors.contains(u"no tab \"Nowhere\""), qPrintable(wrongTab.errors));
        QCOMPARE(run({u"--screenshot"_s, m_folder.filePath(u"pictures"_s)}, {}).exitCode, 0);
        QCOMPARE(first.process.state(), QProcess::Running);
    }

    void secondStartIsRefusedWithoutABus()
    {
        const QMap<QString, QString> nowhere{{u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nowhere"_s}};
        Program first({u"--document"_s, m_document}, nowhere);
        QVERIFY(first.takeFocus());
        const Outcome second = run({u"--document"_s, m_other}, nowhere);
        QCOMPARE(second.exitCode, 1);
        QVERIFY2(second.errors.contains(u"another one runs"), qPrintable(second.errors));
        QCOMPARE(documentInUse(), m_document);
    }

    void windowComesWhileTheBusHangs()
    {
        QProcess bus;
        bus.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address"_s});
        QVERIFY(bus.waitForReadyRead());
        const QString address = QString::fromUtf8(bus.readLine().trimmed());
        ::kill(pid_t(bus.processId()), SIGSTOP);
        {
            Program program({u"--document"_s, m_document}, {{u"DBUS_SESSION_BUS_ADDRESS"_s, address}});
            QVERIFY(program.takeFocus());
        }
        bus.kill();
        bus.waitForFinished();
    }
};

QTEST_GUILESS_MAIN(StartTest)
#include "StartTest.moc"
