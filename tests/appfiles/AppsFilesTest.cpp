// SPDX-License-Identifier: MIT
#include <appfiles/ApplicationsTab.h>
#include <core/BYGlobals.h>
#include <core/SharedNames.h>
#include <platform/controls/Pasteboard.h>
#include <platform/storage/Preferences.h>
#include <platform/table/TableView.h>

#include <QAbstractItemModelTester>
#include <QAction>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTest>

#include <ModalDriver.h>
#include <NotificationRecorder.h>

using namespace Qt::StringLiterals;
using PropertyList::DictionaryPointer;

namespace {

QStringList storedApplications()
{
    QStringList paths;
    const auto stored = Preferences::copyValue(Settings::appsFiles.key, BYGlobals::appID()).array();
    for (qsizetype i = 0; stored && i < stored->size(); ++i) {
        paths.append(stored->at(i).string());
    }
    return paths;
}

/// The tab, set up, and what is done with it.
struct TabFixture
{
    TabFixture()
    {
        controller.awakeFromNib();
        new QAbstractItemModelTester(
            table.model(), QAbstractItemModelTester::FailureReportingMode::QtTest, table.model());
    }

    void click(const QString& button) { tab.findChild<QPushButton*>(button)->click(); }

    QString text(const QString& identifier, int row)
    {
        return controller.tableView_objectValueForTableColumn_row(&table, identifier, row).toString();
    }

    bool drop(const QStringList& paths, int row)
    {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString& path : paths) {
            urls.append(QUrl::fromLocalFile(path));
            urls.last().setHost(u"localhost"_s);
        }
        data.setUrls(urls);
        const Pasteboard pasteboard(&data);
        return controller.tableView_validateDrop_proposedRow_proposedDropOperation(
                   &table, pasteboard, row, DropOperation::Above) == Qt::CopyAction &&
               controller.tableView_acceptDrop_row_dropOperation(&table, pasteboard, row, DropOperation::On);
    }

    ApplicationsTab tab;
    BYAppsFilesController& controller = tab.controller();
    TableView& table = *controller.appsFilesTable;
    QPushButton& removeButton = *controller.removeAppButton;
    QAction& doNotExpand = *controller.appsPopUp->actions().at(0);
    QAction& chooseDocument = *controller.appsPopUp->actions().at(1);
};

} // namespace

class AppsFilesTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        BYGlobals::init();
        for (const QString& key : BYGlobals::file4app()->keys()) {
            BYGlobals::file4app()->remove(key);
        }
        const auto paths = PropertyList::Array::create();
        for (const QString& name : {u"zebra.app"_s, u"Apple.app"_s}) {
            const QString path = m_folder.filePath(name);
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            paths->append(path);
        }
        QFile document(m_folder.filePath(u"Phrases.Blipsy"_s));
        QVERIFY(document.open(QIODevice::WriteOnly));
        Preferences::setValue(Settings::appsFiles.key, paths, BYGlobals::appID());
        QVERIFY(Preferences::synchronize(BYGlobals::appID()));
        m_tab = std::make_unique<TabFixture>();
        QVERIFY(m_recorder.forgetAllPosted());
    }

    void cleanup() { m_tab.reset(); }

    void rowsAreSortedByFileNameWithoutRegardToCase()
    {
        QCOMPARE(m_tab->controller.getSortedAppsArray(), (QStringList{path(u"Apple.app"_s), path(u"zebra.app"_s)}));
        QCOMPARE(m_tab->text(u"application"_s, 1), u"zebra.app"_s);
        QCOMPARE(m_tab->text(u"assocFile"_s, 0), u"do not expand"_s);
    }

    void iconsAreFetchedOnceAndOnlyForRowsThatAreSeen()
    {
        const auto install = [this](Qt::GlobalColor color) {
            const auto paths = PropertyList::Array::create();
            QImage icon(16, 16, QImage::Format_RGB32);
            icon.fill(color);
            const QString picture = path(u"%1.png"_s.arg(int(color)));
            for (int number = 100; number < 200 && icon.save(picture); ++number) {
                QFile entry(path(u"%1.desktop"_s.arg(number)));
                entry.open(QIODevice::WriteOnly);
                entry.write(u"[Desktop Entry]\nType=Application\nName=n\nIcon=%1\n"_s.arg(picture).toUtf8());
                paths->append(entry.fileName());
            }
            return paths;
        };
        Preferences::setValue(Settings::appsFiles.key, install(Qt::red), BYGlobals::appID());
        m_tab = std::make_unique<TabFixture>();
        m_tab->tab.resize(400, 300);
        m_tab->tab.grab();
        install(Qt::blue);
        const auto colorOfRow = [this](int row) {
            const QString application = m_tab->controller.getSortedAppsArray().at(row);
            return m_tab->controller.iconForFileAtPath(application).pixmap(16).toImage().pixelColor(8, 8);
        };
        QCOMPARE(colorOfRow(0), QColor(Qt::red));
        QCOMPARE(colorOfRow(99), QColor(Qt::blue));
    }

    void droppedDocumentServesTheRowsApplication()
    {
        QVERIFY(m_tab->drop({path(u"Phrases.Blipsy"_s)}, 1));
        QCOMPARE(m_tab->text(u"assocFile"_s, 1), u"expand using: Phrases"_s);
        const auto stored = Preferences::copyValue(Settings::file4App.key, BYGlobals::appID()).dictionary();
        QCOMPARE(stored->value(path(u"zebra.app"_s)).string(), path(u"Phrases.Blipsy"_s));
        QTRY_COMPARE(m_recorder.names(), QStringList{u"RefreshMenu"_s});

        QVERIFY(QFile::remove(path(u"Phrases.Blipsy"_s)));
        QCOMPARE(m_tab->text(u"assocFile"_s, 1), u"missing file"_s);
    }

    void whatIsDropped_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("row");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("application") << u"New.app"_s << 0 << true;
        QTest::newRow("application with a slash") << u"New.app/"_s << 0 << true;
        QTest::newRow("installed application") << u"new.desktop"_s << 0 << true;
        QTest::newRow("document in another letter case") << u"x.blipsy"_s << 0 << false;
        QTest::newRow("below the last row") << u"New.app"_s << 2 << false;
    }

    void whatIsDropped()
    {
        QFETCH(QString, name);
        QFETCH(int, row);
        QFETCH(bool, accepted);
        QCOMPARE(m_tab->drop({path(name)}, row), accepted);
        QCOMPARE(storedApplications().contains(QDir::cleanPath(path(name))), accepted);
    }

    void twoDroppedApplicationsAreBothAdded()
    {
        QVERIFY(m_tab->drop({path(u"b.app"_s), path(u"C.app"_s), path(u"zebra.app"_s)}, 0));
        QCOMPARE(storedApplications().size(), 4);
        QCOMPARE(m_tab->table.numberOfRows(), 4);
        QCOMPARE(m_tab->text(u"application"_s, 1), u"b.app"_s);
    }

    void removedApplicationForgetsItsDocument()
    {
        QVERIFY(!m_tab->removeButton.isEnabled());
        m_tab->table.selectRow_byExtendingSelection(1, false);
        QVERIFY(m_tab->removeButton.isEnabled());
        m_tab->click(u"removeAppButton"_s);
        QCOMPARE(storedApplications(), QStringList{path(u"Apple.app"_s)});
        QVERIFY(!BYGlobals::file4app()->contains(path(u"zebra.app"_s)));
        QCOMPARE(m_tab->table.numberOfRows(), 1);
    }

    void addedApplicationIsNotExpandedUntilADocumentIsChosen()
    {
        const QString folder = QDir::homePath() + u"/.local/share/applications"_s;
        QVERIFY(QDir().mkpath(folder));
        QFile entry(folder + u"/middle.desktop"_s);
        QVERIFY(entry.open(QIODevice::WriteOnly));
        entry.write("[Desktop Entry]\nType=Application\nName=Fine Editor\nExec=true\n");
        entry.close();
        ModalDriver add([](QWidget* modal) {
            QTest::keyClicks(modal->findChild<QLineEdit*>(), u"fine"_s);
            QTest::keyClick(modal->findChild<QLineEdit*>(), Qt::Key_Return);
        });
        m_tab->click(u"addAppButton"_s);
        QVERIFY(add.wasAnswered());
        QCOMPARE(storedApplications(), (QStringList{path(u"zebra.app"_s), path(u"Apple.app"_s), entry.fileName()}));
        QCOMPARE(m_tab->table.numberOfRows(), 3);
        QCOMPARE(m_tab->text(u"application"_s, 1), u"Fine Editor"_s);
        QCOMPARE(m_tab->text(u"assocFile"_s, 1), u"do not expand"_s);
        QTRY_COMPARE(m_recorder.names(), QStringList{u"RefreshMenu"_s});

        m_tab->table.selectRow_byExtendingSelection(1, false);
        ModalDriver choose([this](QWidget* modal) {
            auto* name = modal->findChild<QLineEdit*>(u"fileNameEdit"_s);
            name->setText(path(u"Phrases.Blipsy"_s));
            QTest::keyClick(name, Qt::Key_Return);
        });
        m_tab->chooseDocument.trigger();
        QVERIFY(choose.wasAnswered());
        QCOMPARE(m_tab->text(u"assocFile"_s, 1), u"expand using: Phrases"_s);
        const auto stored = Preferences::copyValue(Settings::file4App.key, BYGlobals::appID()).dictionary();
        QCOMPARE(stored->value(entry.fileName()).string(), path(u"Phrases.Blipsy"_s));
        QTRY_COMPARE(m_recorder.names(), (QStringList{u"RefreshMenu"_s, u"RefreshMenu"_s}));
    }

    void changedPhrasesReloadTheTableFromMemory()
    {
        Preferences::setValue(Settings::appsFiles.key, PropertyList::Array::create(), BYGlobals::appID());
        QVERIFY(Preferences::synchronize(BYGlobals::appID()));
        static_cast<TableModel*>(m_tab->table.model())->setNumberOfRows(0);
        BYGlobals::sendNotification(NotificationName::refreshAppsArray);
        QTRY_COMPARE(m_tab->table.numberOfRows(), 2);
        QCOMPARE(m_tab->controller.getSortedAppsArray().size(), 2);
    }

    void cancelledDocumentPanelKeepsTheEntryAndStillTells()
    {
        QVERIFY(m_tab->drop({path(u"Phrases.Blipsy"_s)}, 0));
        QTRY_COMPARE(m_recorder.names().size(), 1);
        m_recorder.clear();
        m_tab->table.selectRow_byExtendingSelection(0, false);
        ModalDriver cancel([](QWidget* modal) { qobject_cast<QDialog*>(modal)->reject(); });
        m_tab->chooseDocument.trigger();
        QVERIFY(cancel.wasAnswered());
        QCOMPARE(m_tab->text(u"assocFile"_s, 0), u"expand using: Phrases"_s);
        QTRY_COMPARE(m_recorder.names(), QStringList{u"RefreshMenu"_s});

        m_tab->doNotExpand.trigger();
        QCOMPARE(m_tab->text(u"assocFile"_s, 0), u"do not expand"_s);
    }

private:
    QString path(const QString& name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
    std::unique_ptr<TabFixture> m_tab;
    NotificationRecorder m_recorder;
};

QTEST_MAIN(AppsFilesTest)
#include "AppsFilesTest.moc"
