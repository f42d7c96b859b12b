// SPDX-License-Identifier: MIT
#include <appfiles/BYAppsFilesController.h>
#include <core/BYGlobals.h>
#include <core/HelperProcess.h>
#include <core/SharedNames.h>
#include <editpane/BYEditPaneController.h>
#include <events/SoundEventsController.h>
#include <launcher/BYlauncher.h>
#include <pane/Interface.h>
#include <phrases/BYTableView.h>
#include <phrases/PrintClippingsWindow.h>
#include <platform/controls/Matrix.h>
#include <platform/controls/Slider.h>
#include <platform/desktop/Bundle.h>
#include <platform/panels/Alert.h>
#include <platform/richtext/TextView.h>
#include <prefs/BYController.h>
#include <texts/EditSession.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

#include <ModalDriver.h>

#include <functional>

using namespace Qt::StringLiterals;
using PropertyList::Array;
using PropertyList::Dictionary;

namespace {

template <typename Widget>
Widget* child(const Interface& interface, const QString& name)
{
    auto* found = interface.view()->findChild<Widget*>(name);
    if (found == nullptr) {
        qFatal("no widget called %s", qPrintable(name));
    }
    return found;
}

/// What an assistive program says of a control: its name, or else what it shows.
QString spokenName(QWidget* widget)
{
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(widget);
    const QString name = accessible != nullptr ? accessible->text(QAccessible::Name) : QString();
    return name.isEmpty() ? widget->toolTip() : name;
}

} // namespace

class PaneTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase() { Bundle::registerBundle(QStringLiteral(BLIPSY_TEST_BUNDLE)); }

    void init()
    {
        const auto phrase = Dictionary::create({{PhraseKey::phrase, u"hello"_s}, {PhraseKey::soundFilepath, u""_s}});
        const auto event = Dictionary::create(
            {{EventKey::event, u"28"_s}, {EventKey::eventName, u"System alert"_s}, {EventKey::soundFilepath, u""_s}});
        const auto mail = Dictionary::create({{EventKey::event, u"5"_s}, {EventKey::eventName, u"Mail"_s}});
        const auto root = Dictionary::create({{DocumentKey::clippings, Array::create({phrase})},
            {DocumentKey::sounds, Array::create({event, mail})}, {DocumentKey::setVolume, u"0.5"_s}});
        const QString path = m_folder.filePath(u"test.blipsy"_s);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.write(PropertyList::write(root)) > 0);
        BYGlobals::storeSetting(path, Settings::defaultFilePath.key);
        BYGlobals::storeSetting(Array::create({path}), Settings::recentFiles.key);
        // A helper of the present build is left alone.
        BYGlobals::storeSetting(u"10012"_s, Settings::menuBuild.key);
    }

    void controllersCanBeSetUpInAnyOrder_data()
    {
        QTest::addColumn<QList<int>>("order");
        const int count = int(Interface().setUps().size());
        for (int first = 0; first < count; ++first) {
            QList<int> order;
            for (int i = 0; i < count; ++i) {
                order.append((first + i) % count);
            }
            QTest::addRow("from %d on", first) << order;
            std::reverse(order.begin(), order.end());
            QTest::addRow("backwards, %d last", first) << order;
        }
    }

    void controllersCanBeSetUpInAnyOrder()
    {
        QFETCH(QList<int>, order);
        Interface interface;
        const auto setUps = interface.setUps();
        for (const int index : order) {
            setUps[size_t(index)]();
        }
        QCOMPARE(child<BYTableView>(interface, u"abbsTableView"_s)->numberOfRows(), 1);
        QCOMPARE(child<TableView>(interface, u"mySoundEventsTable"_s)->numberOfRows(), 2);
        QCOMPARE(child<QLabel>(interface, u"numClippings"_s)->text(), u"1 clippings"_s);
        QCOMPARE(child<QComboBox>(interface, u"defaultClippingsFileNSPopUpButton"_s)->currentText(), u"test"_s);
        QCOMPARE(child<Slider>(interface, u"myVolumeSlider"_s)->floatValue(), 0.5F);
        QCOMPARE(child<Matrix>(interface, u"menuPrefsMatrix"_s)->selectedRow(), 3);
        QCOMPARE(child<Matrix>(interface, u"iTunesAnnouncerPrefMatrix"_s)->selectedColumn(), 1);
        QCOMPARE(child<QAbstractButton>(interface, u"pauseHotKeyButton"_s)->text(), u"(None)"_s);
        QTRY_COMPARE(child<Matrix>(interface, u"onOffRadioButton"_s)->selectedColumn(), 1);
    }

    void helpersPhraseShowsEveryEventAgain()
    {
        Interface interface;
        for (const auto& setUp : interface.setUps()) {
            setUp();
        }
        auto* events = child<TableView>(interface, u"mySoundEventsTable"_s);
        auto* search = child<QLineEdit>(interface, u"mySearchField"_s);
        search->setText(u"mail"_s);
        QCOMPARE(events->numberOfRows(), 1);
        events->selectRow_byExtendingSelection(0, false);
        BYGlobals::sendNotification(
            NotificationName::newRowAddedViaMenu, Dictionary::create({{PhraseKey::phrase, u"hello"_s}}));
        QTRY_COMPARE(child<TableView>(interface, u"abbsTableView"_s)->selectedRow(), 0);
        QCOMPARE(events->numberOfRows(), 2);
        QCOMPARE(events->selectedRow(), 1);
        QCOMPARE(search->text(), u"mail"_s);
    }

    void missingOutletsAreLeftOut_data()
    {
        QTest::addColumn<std::function<void(TableView*)>>("use");
        QTest::addColumn<bool>("hasTable");
        const auto rows = [](const char* name, void (*use)(TableView*)) {
            QTest::addRow("%s", name) << std::function(use) << false;
            QTest::addRow("%s, with a table", name) << std::function(use) << true;
        };
        rows("phrases", &usePhrases);
        rows("events", &useEvents);
        rows("applications", &useApplications);
        rows("edit pane", &useEditPane);
        QTest::newRow("options") << std::function(&useOptions) << false;
        QTest::newRow("launcher") << std::function(&useLauncher) << false;
    }

    /// With a table what follows from its selection is reached as well.
    void missingOutletsAreLeftOut()
    {
        QFETCH(const std::function<void(TableView*)>, use);
        BYGlobals::init();
        BYGlobals::fillArray();
        QFETCH(const bool, hasTable);
        TableView table;
        const ModalDriver cancelSoundPanel([](QWidget* panel) { panel->close(); });
        use(hasTable ? &table : nullptr);
    }

    void everyControlInTheTabOrderHasAName()
    {
        Interface interface;
        for (const auto& setUp : interface.setUps()) {
            setUp();
        }
        interface.view()->show();
        QStringList nameless;
        for (const QString& tab : Interface::tabNames()) {
            QVERIFY(interface.selectTab(tab));
            const QList<QWidget*> widgets = interface.view()->findChildren<QWidget*>();
            for (QWidget* widget : widgets) {
                const bool isReached = (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->isVisible();
                if (isReached && spokenName(widget).isEmpty()) {
                    nameless.append(tab + u": "_s + QString::fromLatin1(widget->metaObject()->className()) + u' ' +
                                    widget->objectName());
                }
            }
        }
        QCOMPARE(nameless.join(u", "_s), QString());
        QVERIFY(!interface.selectTab(u"Nowhere"_s));
    }

    void favouritesServeThePanelOfEitherTable_data()
    {
        QTest::addColumn<QString>("table");
        QTest::newRow("phrases") << u"abbsTableView"_s;
        QTest::newRow("events") << u"mySoundEventsTable"_s;
    }

    void favouritesServeThePanelOfEitherTable()
    {
        QFETCH(QString, table);
        Interface interface;
        for (const auto& setUp : interface.setUps()) {
            setUp();
        }
        const QString favourite = m_folder.filePath(u"sounds"_s);
        QVERIFY(QDir().mkpath(favourite));
        const ModalDriver driver([&](QWidget* modal) {
            const auto close = qScopeGuard([modal] { modal->close(); });
            auto* const panel = qobject_cast<QFileDialog*>(modal);
            auto* const add = modal->findChild<QPushButton*>(u"myAddToFavouritesButton"_s);
            auto* const favourites = modal->findChild<QComboBox*>(u"myFavouriteFoldersPopUpButton"_s);
            auto* const list = modal->findChild<QListView*>(u"listView"_s);
            QVERIFY(!add->isEnabled());
            const int before = favourites->count();
            panel->setDirectory(m_folder.path());
            QTRY_COMPARE(list->model()->rowCount(list->rootIndex()), 1);
            list->setCurrentIndex(list->model()->index(0, 0, list->rootIndex()));
            add->click();
            add->click();
            QCOMPARE(favourites->count(), before + 1);
            favourites->setCurrentIndex(before);
            Q_EMIT favourites->activated(before);
            QCOMPARE(panel->directory().path(), favourite);
        });
        auto* const phrasesOrEvents = child<TableView>(interface, table);
        phrasesOrEvents->selectRow_byExtendingSelection(0, false);
        QKeyEvent commandA(QEvent::KeyPress, Qt::Key_A, Qt::ControlModifier, u"a"_s);
        QVERIFY(phrasesOrEvents->performKeyEquivalent(&commandA));
        QVERIFY(driver.wasAnswered());
    }

private:
    static void usePhrases(TableView* events)
    {
        BYTableView table;
        PrintClippingsWindow window;
        table.mySoundEventsTable = events;
        table.printClippingsWindow = &window;
        table.awakeFromNib();
        table.selectRow_byExtendingSelection(0, false);
        table.showPrintClippingsWindow(nullptr);
        table.openDoc(nullptr);
        table.useDocument(BYGlobals::defaultFilePath());
        table.addRow(nullptr);
        table.trashButtonAction(nullptr);
        gConfirmRemove = false;
        table.removeRow(nullptr);
        table.willUnselect();
    }

    static void useEvents(TableView* table)
    {
        SoundEventsController events;
        events.mySoundEventsTable = table;
        events.awakeFromNib();
        events.volumePopUpAction(nullptr);
        if (table) {
            table->selectRow_byExtendingSelection(1, false);
        }
        Slider slider;
        events.volumeSliderAction(&slider);
        events.trashButtonAction(nullptr);
        events.handleAssignSoundDialog_row(nullptr, 0);
        QMenu menu;
        events.myVolumePopUp = &menu;
        events.awakeFromNib();
        menu.actions().constFirst()->trigger();
    }

    static void useApplications(TableView* table)
    {
        BYAppsFilesController applications;
        applications.appsFilesTable = table;
        BYGlobals::storeSetting(Array::create({u"/a.app"_s}), Settings::appsFiles.key);
        applications.awakeFromNib();
        if (table) {
            table->selectRow_byExtendingSelection(0, false);
        }
        QAction doNotExpand;
        doNotExpand.setData(1);
        applications.appsPopUpAction(&doNotExpand);
        applications.removeAppFromExclusionList(nullptr);
    }

    static void useEditPane(TableView* table)
    {
        Matrix choice;
        const auto act = [&](TextView* editPane) {
            EditSession session({.text = editPane});
            BYEditPaneController controller(session);
            controller.abbsTableView = table;
            controller.editPane = editPane;
            controller.awakeFromNib();
            QAction item;
            controller.enterDateTimeSyntax(&item);
            controller.clippingMenuItemSelected(&item);
            controller.saveEditedAbb(nullptr);
            controller.plainOrRich(&choice);
            controller.alertDidEnd_returnCode_contextInfo(nullptr, Alert::firstButtonReturn, nullptr);
        };
        act(nullptr);
        TextView editPane;
        act(&editPane);
    }

    static void useOptions(TableView*)
    {
        BYController options;
        options.awakeFromNib();
        QSpinBox stepper;
        options.enterIdleTalkIntervalPref(&stepper);
        options.selectAllTriggers(nullptr);
        options.deSelectAllTriggers(nullptr);
        options.hotKeySheetDidEndWithReturnCode(PTKeyComboPanel::okReturn);
        options.handleTimer();
        waitForHelperProcess();
    }

    static void useLauncher(TableView*)
    {
        BYlauncher launcher;
        launcher.awakeFromNib();
        launcher.handleTimer();
        waitForHelperProcess();
    }

    /// Questions about the helper are answered in order.
    static void waitForHelperProcess()
    {
        QObject context;
        bool answered = false;
        HelperProcess::isRunning(&context, [&answered](bool) { answered = true; });
        QTRY_VERIFY(answered);
    }

    QTemporaryDir m_folder;
};

QTEST_MAIN(PaneTest)
#include "PaneTest.moc"
