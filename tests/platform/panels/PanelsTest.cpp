// SPDX-License-Identifier: MIT
#include <platform/panels/Alert.h>
#include <platform/panels/OpenPanel.h>
#include <platform/panels/SavePanel.h>

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <ClassicFixtures.h>
#include <DataTable.h>
#include <Files.h>
#include <ModalDriver.h>

using namespace Qt::StringLiterals;

namespace {

QModelIndex rowCalled(QWidget* panel, const QString& name)
{
    const auto* const list = panel->findChild<QListView*>(u"listView"_s);
    const QAbstractItemModel* const model = list->model();
    for (int row = 0; row < model->rowCount(list->rootIndex()); ++row) {
        const QModelIndex index = model->index(row, 0, list->rootIndex());
        if (index.data().toString() == name) {
            return index;
        }
    }
    return {};
}

void pressOpen(QWidget* panel)
{
    QPushButton* const button = panel->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open);
    QTRY_VERIFY(button->isEnabled());
    button->click();
}

/// Ends a panel that a fault keeps open, so that the test fails instead of hanging.
void rejectIfOpen(QWidget* panel)
{
    if (panel->isVisible()) {
        qobject_cast<QDialog*>(panel)->reject();
    }
}

} // namespace

class PanelsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        Files::write(m_folder->filePath(u"boing.AIFF"_s), "x");
        Files::write(m_folder->filePath(u"notes.txt"_s), "x");
        Files::write(m_folder->filePath(u"suitcase"_s), "x");
        Files::write(
            m_folder->filePath(u"._suitcase"_s), ClassicFixtures::appleDouble(ClassicFixtures::finderInfo("SFIL"), {}));
        QVERIFY(QDir(m_folder->path()).mkdir(u"Sounds"_s));
    }

    void alertAnswersItsButtons_data()
    {
        const DataTable<int, Alert::Dismissal, ModalDriver::Act> row("answer", "dismissal", "act");
        const auto pressing = [](Qt::Key key) { return [key](QWidget* alert) { QTest::keyClick(alert, key); }; };
        const auto answered = Alert::Dismissal::AnswersAlternate;
        row("default", 1, answered, ModalDriver::click(u"Remove"_s));
        row("alternate", 0, answered, ModalDriver::click(u"Cancel"_s));
        row("Return", 1, answered, pressing(Qt::Key_Return));
        row("Escape", 0, answered, pressing(Qt::Key_Escape));
        row("closing", 0, answered, [](QWidget* alert) { alert->close(); });
        row("Escape and closing are refused", 1, Alert::Dismissal::IsRefused, [pressing](QWidget* alert) {
            pressing(Qt::Key_Escape)(alert);
            alert->close();
            pressing(Qt::Key_Return)(alert);
        });
    }

    void alertAnswersItsButtons()
    {
        const auto [answer, dismissal, act] = currentRow<int, Alert::Dismissal, ModalDriver::Act>();
        const ModalDriver driver(act);
        QCOMPARE(Alert::runAlertPanel(nullptr, u"Confirm"_s, u"Sure?"_s, u"Remove"_s, u"Cancel"_s, dismissal), answer);
        QVERIFY(driver.wasAnswered());
    }

    void sheetBlocksItsWindowAndTellsTheOutcome()
    {
        QWidget window;
        window.show();
        QList<int> answers;
        for (const QString& button : {u"Keep"_s, u"Discard"_s}) {
            Alert::beginSheet(
                &window, u"<b>"_s, u"Text"_s, u"Keep"_s, u"Discard"_s, [&](int answer) { answers.append(answer); });
            auto* const sheet = window.findChild<QDialog*>(u"AlertPanel"_s);
            QCOMPARE(sheet->windowModality(), Qt::WindowModal);
            ModalDriver::click(button)(sheet);
            QTRY_VERIFY(!window.findChild<QDialog*>(u"AlertPanel"_s));
        }
        QCOMPARE(answers, QList<int>({Alert::firstButtonReturn, Alert::secondButtonReturn}));
    }

    void openPanelShowsAcceptedKinds()
    {
        const ModalDriver driver([](QWidget* modal) {
            // The suitcase has no extension: it appears when its classic type has been looked up.
            QTRY_VERIFY(rowCalled(modal, u"suitcase"_s).isValid());
            QVERIFY(rowCalled(modal, u"boing.AIFF"_s).isValid());
            QVERIFY(rowCalled(modal, u"Sounds"_s).isValid());
            QVERIFY(!rowCalled(modal, u"notes.txt"_s).isValid());
            qobject_cast<QDialog*>(modal)->reject();
        });
        OpenPanel panel;
        QCOMPARE(panel.runModalForDirectory_file_types(m_folder->path(), {}, {u"aiff"_s, u"'SFIL'"_s}), cancelButton);
        QVERIFY(driver.wasAnswered());
        QVERIFY(panel.filenames().isEmpty());
    }

    void openPanelChoosesFilesAndFolders_data()
    {
        const DataTable<QString> row("name");
        row("file", u"boing.AIFF"_s);
        row("folder", u"Sounds"_s);
        row("typed folder with a slash", u"Sounds/"_s);
    }

    void openPanelChoosesFilesAndFolders()
    {
        QFETCH(QString, name);
        OpenPanel panel;
        panel.setCanChooseDirectories(true);
        QStringList seen;
        panel.setSelectionDidChange([&] { seen = panel.filenames(); });
        const QString path = QDir::cleanPath(m_folder->filePath(name));
        const ModalDriver driver([&](QWidget* modal) {
            QCOMPARE(modal->objectName(), u"OpenPanel"_s);
            if (name.endsWith(u'/')) {
                modal->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(m_folder->filePath(name));
            } else {
                QTRY_VERIFY(rowCalled(modal, name).isValid());
                modal->findChild<QListView*>(u"listView"_s)->setCurrentIndex(rowCalled(modal, name));
                QCOMPARE(seen, QStringList{path});
            }
            pressOpen(modal);
            rejectIfOpen(modal);
        });
        QCOMPARE(panel.runModalForDirectory_file_types(m_folder->path(), {}, {u"aiff"_s}), okButton);
        QCOMPARE(panel.filenames(), QStringList{path});
    }

    void accessoryIsShownAndGivenBack()
    {
        QWidget owner;
        auto* const accessory = new QWidget(&owner);
        OpenPanel panel;
        panel.setAccessoryView(accessory);
        const ModalDriver driver([&](QWidget* modal) {
            QVERIFY(modal->isAncestorOf(accessory) && accessory->isVisible());
            const QWidget* const list = modal->findChild<QListView*>(u"listView"_s);
            QVERIFY(accessory->mapTo(modal, QPoint()).y() > list->mapTo(modal, QPoint()).y());
            qobject_cast<QDialog*>(modal)->reject();
        });
        panel.runModalForDirectory_file_types(m_folder->path(), {}, {});
        QCOMPARE(accessory->parentWidget(), &owner);
        QVERIFY(accessory->isHidden());
    }

    void missingFolderFallsBackToHome()
    {
        QString shown;
        const ModalDriver driver([&shown](QWidget* modal) {
            shown = qobject_cast<QFileDialog*>(modal)->directory().absolutePath();
            qobject_cast<QDialog*>(modal)->reject();
        });
        OpenPanel().runModalForDirectory_file_types(u"/no/such/folder"_s, {}, {});
        QCOMPARE(shown, QDir::homePath());
    }

    void applicationsFolderListsTheDesktopsApplications()
    {
        const QString folder = QDir::homePath() + u"/.local/share/applications"_s;
        for (const QByteArray name : {"Fine Edge", "Fine Editor", "Other"}) {
            Files::write(folder + u'/' + QString::fromLatin1(name) + u".desktop",
                "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=true\n");
        }
        const ModalDriver driver([](QWidget* modal) {
            auto* const search = modal->findChild<QLineEdit*>();
            QTest::keyClicks(search, u"fine ed"_s);
            QCOMPARE(modal->findChild<QListView*>()->model()->rowCount(), 2);
            QTest::keyClick(search, Qt::Key_Down);
            QTest::keyClick(search, Qt::Key_Return);
            rejectIfOpen(modal);
        });
        OpenPanel panel;
        QCOMPARE(panel.runModalForDirectory_file_types(u"/Applications"_s, {}, {u"app"_s, u"'APPL'"_s}), okButton);
        QCOMPARE(panel.filenames(), QStringList{folder + u"/Fine Editor.desktop"_s});
    }

    void savePanelAsksAboutTheNameThatWillBeWritten_data()
    {
        const DataTable<QString, QString, int> row("name", "answer", "result");
        row("new name", u"fresh"_s, {}, 1);
        row("replace", u"notes"_s, u"Replace"_s, 1);
        row("keep", u"notes"_s, u"Cancel"_s, 0);
        row("folder that is not there", u"missing/fresh"_s, u"OK"_s, 0);
    }

    void savePanelAsksAboutTheNameThatWillBeWritten()
    {
        const auto [name, answer] = currentRow<QString, QString>();
        SavePanel panel;
        panel.setAppendedSuffix(u".txt"_s);
        bool wasAsked = false;
        const ModalDriver driver([&wasAsked, answer = answer](QWidget* modal) {
            QCOMPARE(modal->objectName(), u"SavePanel"_s);
            const ModalDriver second([&wasAsked, answer](QWidget* alert) {
                wasAsked = true;
                ModalDriver::click(answer)(alert);
            });
            qobject_cast<QFileDialog*>(modal)->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save)->click();
            rejectIfOpen(modal);
        });
        QTEST(panel.runModalForDirectory_file(m_folder->path(), name), "result");
        QCOMPARE(wasAsked, !answer.isEmpty());
        QCOMPARE(panel.filename(), panel.filename().isEmpty() ? QString() : m_folder->filePath(name));
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_MAIN(PanelsTest)
#include "PanelsTest.moc"
