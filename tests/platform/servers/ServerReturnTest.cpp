// SPDX-License-Identifier: MIT
#include <platform/servers/ServerReturn.h>

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <DataTable.h>
#include <Files.h>
#include <poll.h>

using namespace Qt::StringLiterals;

class ServerReturnTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void socketIsNoticedAfterTheLastTry_data()
    {
        const DataTable<QString, QString, bool> row("there", "made", "isDue");
        row("in its folder", u"run/server"_s, u"run/server/socket"_s, true);
        row("with its folder", u"run"_s, u"run/server/socket"_s, true);
        row("with two folders", {}, u"run/server/socket"_s, true);
        row("another file", u"run/server"_s, u"run/server/lock"_s, false);
    }

    void socketIsNoticedAfterTheLastTry()
    {
        const auto [there, made, isDue] = currentRow<QString, QString, bool>();
        const QTemporaryDir folder;
        const QDir dir(folder.path());
        QVERIFY(there.isEmpty() || dir.mkpath(there));
        ServerReturn server(folder.filePath(u"run/server/socket"_s).toLocal8Bit());
        // The fifth try is 25.6 seconds away.
        for (int tries = 0; tries < 5; ++tries) {
            server.wait();
        }
        QVERIFY(dir.mkpath(u"run/server"_s));
        Files::write(folder.filePath(made), {});
        const auto becomesDue = [&server](int milliseconds) {
            pollfd descriptor{server.descriptor(), POLLIN, 0};
            bool is = false;
            while (!is && ::poll(&descriptor, 1, milliseconds) > 0) {
                is = server.isDue();
            }
            return is;
        };
        QCOMPARE(becomesDue(isDue ? 10'000 : 500), isDue);
        server.end();
        QVERIFY(!becomesDue(0));
    }
};

QTEST_GUILESS_MAIN(ServerReturnTest)
#include "ServerReturnTest.moc"
