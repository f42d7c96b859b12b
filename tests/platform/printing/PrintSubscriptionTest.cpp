// SPDX-License-Identifier: MIT
#include <platform/printing/PrintSubscription.h>

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <Files.h>

using namespace Qt::StringLiterals;

/// Asks a print server of the test's own.
class PrintSubscriptionTest final : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    QProcess m_server;

    QString path(const QString& name) const { return m_folder.filePath(name); }

    void startServer()
    {
        m_server.start(u"/usr/sbin/cupsd"_s, {u"-f"_s, u"-c"_s, path(u"server"_s), u"-s"_s, path(u"files"_s)});
        QVERIFY(m_server.waitForStarted());
    }

    /// How often the server has said so.
    qsizetype said(const char* operationAndStatus) const
    {
        return Files::contents(path(u"access"_s)).count(operationAndStatus);
    }

private Q_SLOTS:

    void initTestCase()
    {
        const QByteArray folder = m_folder.path().toLocal8Bit();
        Files::write(path(u"server"_s), "Listen " + folder +
                                            "/socket\nWebInterface No\nAccessLogLevel all\n<Location />\n"
                                            "Order allow,deny\n</Location>\n");
        QByteArray files =
            "AccessLog " + folder + "/access\nErrorLog " + folder + "/errors\nPageLog " + folder + "/pages\n";
        for (const char* const name : {"ServerRoot", "CacheDir", "RequestRoot", "StateDir", "TempDir"}) {
            files += QByteArray(name) + ' ' + folder + '/' + name + '\n';
            QVERIFY(QDir(m_folder.path()).mkpath(QString::fromLatin1(name)));
        }
        Files::write(path(u"files"_s), files);
        qputenv("CUPS_SERVER", folder + "/socket");
    }

    void isAskedForRenewedAndAskedForAgain()
    {
        constexpr int patience = 30'000;
        PrintSubscription subscription(nullptr);
        subscription.start();
        startServer();
        QTRY_COMPARE_WITH_TIMEOUT(said("Create-Printer-Subscriptions successful-ok"), 1, patience);
        QTRY_VERIFY_WITH_TIMEOUT((subscription.ask(), said("Renew-Subscription successful-ok") > 0), patience);

        // A server that has lost what it had granted.
        m_server.kill();
        QVERIFY(m_server.waitForFinished());
        QFile::remove(path(u"ServerRoot/subscriptions.conf"_s));
        startServer();
        QTRY_VERIFY_WITH_TIMEOUT(
            (subscription.ask(), said("Create-Printer-Subscriptions successful-ok") == 2), patience);
    }

    void cleanupTestCase()
    {
        m_server.kill();
        m_server.waitForFinished();
    }
};

QTEST_GUILESS_MAIN(PrintSubscriptionTest)
#include "PrintSubscriptionTest.moc"
