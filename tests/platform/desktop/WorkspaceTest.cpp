// SPDX-License-Identifier: MIT
#include <platform/desktop/Bundle.h>
#include <platform/desktop/DesktopApplications.h>
#include <platform/desktop/ProcessLauncher.h>
#include <platform/desktop/Text.h>
#include <platform/desktop/Workspace.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QDir>
#include <QLocale>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <DataTable.h>
#include <Files.h>

using namespace Qt::StringLiterals;
using Files::write;

namespace {

QString applicationsFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation);
}

/// A place where a block device is mounted, as the kernel tells it: {mount point, device}.
QPair<QString, QString> someMountedDevice()
{
    QFile table(u"/proc/self/mounts"_s);
    if (table.open(QIODevice::ReadOnly)) {
        for (const QByteArray& line : table.readAll().split('\n')) {
            const QList<QByteArray> fields = line.split(' ');
            if (fields.size() > 1 && fields.first().startsWith("/dev/")) {
                return {QString::fromUtf8(fields.at(1)), QString::fromUtf8(fields.first())};
            }
        }
    }
    return {};
}

/// Stands in for services that show or change the whole desktop: notes every call made to it and agrees.
class DesktopService final : public QDBusVirtualObject
{
public:
    explicit DesktopService(const QString& name)
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        m_ready = bus.registerService(name) && bus.registerVirtualObject(u"/org"_s, this, QDBusConnection::SubPath);
    }

    QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        m_calls << message.path() + u' ' + message.member();
        m_arguments << message.arguments();
        const QVariantList drive{
            QVariant::fromValue(QDBusVariant(QVariant::fromValue(QDBusObjectPath(u"/org/drive"_s))))};
        return connection.send(message.createReply(message.member() == u"Get" ? drive : QVariantList()));
    }

    bool m_ready = false;
    QStringList m_calls;
    QVariantList m_arguments;
};

} // namespace

class WorkspaceTest final : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;

private Q_SLOTS:

    void initTestCase()
    {
        // The machine's own bus is no place for tests.
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", qgetenv("DBUS_SESSION_BUS_ADDRESS"));
    }

    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void applicationsAreThoseToOffer()
    {
        qputenv("XDG_DATA_DIRS", m_folder.path().toUtf8());
        const QString shared = m_folder.filePath(u"applications/"_s);
        const QByteArray head = "[Desktop Entry]\nType=Application\nExec=x\n";
        write(shared + u"beta.desktop"_s, head + "Name=Beta\n[Other]\nName=Wrong\nNoDisplay=true\n");
        write(
            shared + u"sub/alpha.desktop"_s, "# comment\n" + head + "Name=Alpha\\sOne\nName[de]=Ah\nName[de_AT]=Oh\n");
        write(shared + u"hidden.desktop"_s, head + "Name=Hidden\nNoDisplay=true\n");
        write(shared + u"deleted.desktop"_s, head + "Name=Deleted\n");
        write(applicationsFolder() + u"/deleted.desktop"_s, "[Desktop Entry]\nHidden=true\n");
        write(shared + u"other.desktop"_s, head + "Name=Other\nOnlyShowIn=Elsewhere;\n");
        write(shared + u"link.desktop"_s, "[Desktop Entry]\nType=Link\nName=Link\n");
        write(shared + u"garbage.desktop"_s, QByteArray("\0\xff[=\n=]", 7));
        QStringList names;
        for (const auto& entry : DesktopApplications::installed()) {
            names << entry.name;
        }
        QCOMPARE(names, (QStringList{u"Alpha One"_s, u"Beta"_s}));
        const QString alpha = shared + u"sub/alpha.desktop"_s;
        QLocale::setDefault(QLocale(u"de_AT"_s));
        QCOMPARE(Workspace::displayNameAtPath(alpha), u"Oh");
        QLocale::setDefault(QLocale(u"de_CH"_s));
        QCOMPARE(Workspace::displayNameAtPath(alpha), u"Ah");
        QCOMPARE(Workspace::displayNameAtPath(shared + u"garbage.desktop"_s), u"garbage.desktop");
    }

    void applicationsShowTheirOwnIcon()
    {
        const QString picture = m_folder.filePath(u"picture.png"_s);
        QImage red(16, 16, QImage::Format_RGB32);
        red.fill(Qt::red);
        QVERIFY(red.save(picture));
        const QString entry = m_folder.filePath(u"icon.desktop"_s);
        write(entry, "[Desktop Entry]\nType=Application\nName=Icon\nIcon=" + picture.toUtf8());
        const QString bundle = m_folder.filePath(u"Some.app"_s);
        write(bundle + u"/Contents/Info.plist"_s,
            "<plist version=\"1.0\"><dict><key>CFBundleIconFile</key><string>face</string></dict></plist>");
        QDir().mkpath(bundle + u"/Contents/Resources"_s);
        QVERIFY(QFile::copy(picture, bundle + u"/Contents/Resources/face.png"_s));
        for (const QString& application : {entry, bundle}) {
            const QImage shown = Workspace::iconForFile(application).pixmap(16, 16).toImage();
            QCOMPARE(shown.pixelColor(8, 8), QColor(Qt::red));
        }
        QVERIFY(!Workspace::genericApplicationIcon().pixmap(16, 16).isNull());
        QVERIFY(!Workspace::iconForFile(u"/nowhere/at all"_s).pixmap(16, 16).isNull());
    }

    void fileManagerSelectsTheFile()
    {
        DesktopService manager(u"org.freedesktop.FileManager1"_s);
        QVERIFY(manager.m_ready);
        Workspace::selectFile({});
        Workspace::selectFile(u"/some folder/ä.aiff"_s);
        QTRY_COMPARE(manager.m_calls, QStringList{u"/org/freedesktop/FileManager1 ShowItems"_s});
        QCOMPARE(manager.m_arguments.first(), QVariant(QStringList{u"file:///some%20folder/%C3%A4.aiff"_s}));
    }

    void onlyAMountedVolumeIsEjected()
    {
        const auto [mountPoint, device] = someMountedDevice();
        if (device.isEmpty()) {
            QSKIP("no block device is mounted here");
        }
        DesktopService disks(u"org.freedesktop.UDisks2"_s);
        QVERIFY(disks.m_ready);
        Workspace::unmountAndEject(u"/Volumes/BlipsyInstaller"_s);
        Workspace::unmountAndEject(mountPoint);
        QTRY_COMPARE(disks.m_calls.size(), 3);
        QVERIFY2(disks.m_calls.at(0).endsWith(u" Unmount"_s), qPrintable(disks.m_calls.at(0)));
        QVERIFY(disks.m_calls.at(0).startsWith(u"/org/freedesktop/UDisks2/block_devices/"_s));
        QCOMPARE(disks.m_calls.at(2), u"/org/drive Eject");
    }

    void textsComeInTheUsersLanguage_data()
    {
        const DataTable<QString, QString> row("locale", "text");
        row("exact", u"de_AT"_s, u"Klang"_s);
        row("no such language", u"fr_FR"_s, u"English sound"_s);
        row("C", u"C"_s, u"English sound"_s);
    }

    void textsComeInTheUsersLanguage()
    {
        const auto [locale, text] = currentRow<QString, QString>();
        for (const auto& [language, translation] : {std::pair{"de", "Klang"}, std::pair{"en", "English sound"}}) {
            const QString base =
                m_folder.filePath(u"pane/Contents/Resources/%1.lproj/Localizable"_s.arg(QString::fromLatin1(language)));
            write(base + u".ts"_s, QByteArray("<TS version=\"2.1\" language=\"") + language +
                                       "\"><context><name>" PRODUCT_BUNDLE_IDENTIFIER
                                       "</name><message><source>Sound</source><translation>" +
                                       translation + "</translation></message></context></TS>");
            QCOMPARE(QProcess::execute(QStringLiteral(LRELEASE), {u"-silent"_s, base + u".ts"_s}), 0);
        }
        QLocale::setDefault(QLocale(locale));
        Bundle::registerBundle(m_folder.filePath(u"pane/"_s));
        QCOMPARE(Bundle::resourcePath(), m_folder.filePath(u"pane/Contents/Resources"_s));
        QCOMPARE(Text::tr("Sound"), text);
        QCOMPARE(Text::tr("Unknown → key"), u"Unknown → key");
    }

    void missingHomeFolderStopsNoProgram()
    {
        const QByteArray home = qgetenv("HOME");
        const auto restore = qScopeGuard([&home] { qputenv("HOME", home); });
        const QTemporaryDir folder;
        qputenv("HOME", folder.filePath(u"missing"_s).toUtf8());
        QVERIFY(ProcessLauncher::launch(u"/usr/bin/touch"_s, {folder.filePath(u"started"_s)}));
        QTRY_VERIFY(QFileInfo::exists(folder.filePath(u"started"_s)));
    }
};

QTEST_MAIN(WorkspaceTest)
#include "WorkspaceTest.moc"
