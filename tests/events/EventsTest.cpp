// SPDX-License-Identifier: MIT
#include <core/BYGlobals.h>
#include <core/SoundEvent.h>
#include <events/EventsTab.h>
#include <platform/controls/Pasteboard.h>
#include <platform/controls/Slider.h>
#include <platform/table/TableView.h>
#include <sounds/SoundPanelAccessory.h>
#include <sounds/SoundPasteboard.h>

#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTest>

#include <ModalDriver.h>
#include <NotificationRecorder.h>

using namespace Qt::StringLiterals;
using PropertyList::Array;
using PropertyList::ArrayPointer;
using PropertyList::Dictionary;
using PropertyList::DictionaryPointer;
using PropertyList::Value;

namespace {

Value eventEntry(const QString& code, const QString& name, const QString& category, const QString& sound)
{
    const DictionaryPointer entry = Dictionary::create();
    entry->insert(EventKey::event, code);
    entry->insert(EventKey::eventName, name);
    entry->insert(EventKey::eventCatName, category);
    entry->insert(EventKey::soundFilepath, sound);
    entry->insert(EventKey::volume, u"0.25"_s);
    return entry;
}

/// The tab, set up and shown, and what is done with it.
struct TabFixture
{
    TabFixture()
    {
        controller.awakeFromNib();
        new QAbstractItemModelTester(
            table.model(), QAbstractItemModelTester::FailureReportingMode::QtTest, table.model());
        tab.resize(600, 300);
        tab.show();
    }

    QVariant cell(const QString& identifier, int row)
    {
        return controller.tableView_objectValueForTableColumn_row(&table, identifier, row);
    }

    QStringList shownNames()
    {
        QStringList names;
        for (int row = 0; row < table.numberOfRows(); ++row) {
            names.append(cell(u"EventName"_s, row).toString());
        }
        return names;
    }

    bool drop(const QString& path, int row)
    {
        QMimeData data;
        QUrl url = QUrl::fromLocalFile(path);
        url.setHost(u"localhost"_s);
        data.setUrls({url});
        const Pasteboard pasteboard(&data);
        return controller.tableView_validateDrop_proposedRow_proposedDropOperation(
                   &table, pasteboard, row, DropOperation::Above) == Qt::CopyAction &&
               controller.tableView_acceptDrop_row_dropOperation(&table, pasteboard, row, DropOperation::On);
    }

    SoundPanelAccessory soundPanel;
    EventsTab tab{soundPanel};
    SoundEventsController& controller = tab.controller();
    TableView& table = *controller.mySoundEventsTable;
    Slider& slider = *controller.myVolumeSlider;
    QLabel& label = *controller.myVolumeSliderLabel;
};

} // namespace

class EventsTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase() { BYGlobals::init(); }

    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_sound = m_folder->filePath(u"boing.aiff"_s);
        QFile file(m_sound);
        QVERIFY(file.open(QIODevice::WriteOnly));
        const DictionaryPointer root = Dictionary::create();
        const ArrayPointer events = Array::create();
        events->append(eventEntry(u"3"_s, u"Trash emptied"_s, u"Files"_s, m_sound));
        events->append(eventEntry(u"28"_s, u"System alert"_s, u"System"_s, u""_s));
        events->append(u"no dictionary"_s);
        events->append(eventEntry(u"5"_s, u"Mail received"_s, u"Network"_s, u"/gone/away.aiff"_s));
        root->insert(DocumentKey::sounds, events);
        root->insert(DocumentKey::setVolume, u"0.75"_s);
        const QString path = m_folder->filePath(u"test.blipsy"_s);
        QFile document(path);
        QVERIFY(document.open(QIODevice::WriteOnly));
        document.write(PropertyList::write(root));
        document.close();
        BYGlobals::setDefaultFilePath(path);
        BYGlobals::fillArray();
        gConfirmRemove = true;
        m_tab = std::make_unique<TabFixture>();
        QVERIFY(QTest::qWaitForWindowActive(&m_tab->tab));
        m_tab->table.setFocus();
        QVERIFY(m_recorder.forgetAllPosted());
    }

    void cleanup() { m_tab.reset(); }

    void searchNarrowsTheListInDocumentOrder_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("names");
        QTest::newRow("empty text shows everything")
            << QString() << QStringList{u"Trash emptied"_s, u"System alert"_s, u"Mail received"_s};
        QTest::newRow("letter case does not matter") << u"TRASH"_s << QStringList{u"Trash emptied"_s};
        QTest::newRow("the category counts") << u"netw"_s << QStringList{u"Mail received"_s};
        QTest::newRow("the sound's folder counts") << u"gone/"_s << QStringList{u"Mail received"_s};
        QTest::newRow("an entry is listed once") << u"system"_s << QStringList{u"System alert"_s};
        QTest::newRow("nothing found") << u"zebra"_s << QStringList();
    }

    void searchNarrowsTheListInDocumentOrder()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, names);
        auto* const field = m_tab->tab.findChild<QLineEdit*>(u"mySearchField"_s);
        field->setText(u"something else"_s);
        field->setText(text);
        QCOMPARE(m_tab->shownNames(), names);
    }

    void soundCellTellsFileAndAbsence()
    {
        QCOMPARE(m_tab->cell(u"SoundFilepath"_s, 0).toString(), u"boing.aiff"_s);
        QVERIFY(!m_tab->cell(u"SoundFilepath"_s, 1).isValid());
        QCOMPARE(m_tab->cell(u"SoundFilepath"_s, 2).toString(), u"cannot find assigned sound!"_s);
        entryAt(0)->insert(EventKey::soundFilepath, u"/"_s);
        QCOMPARE(m_tab->cell(u"SoundFilepath"_s, 0).toString(), u"/"_s);
    }

    void sliderSetsWhatTheSelectionSays()
    {
        m_tab->table.selectRow_byExtendingSelection(0, false);
        QCOMPARE(m_tab->label.text(), u"Event volume:"_s);
        QCOMPARE(m_tab->slider.floatValue(), 0.25F);
        m_tab->slider.setValue(m_tab->slider.maximum() / 2);
        QCOMPARE(entryAt(0)->value(EventKey::volume).string(), u"0.5"_s);
        QCOMPARE(storedEntryAt(0)->value(EventKey::volume).string(), u"0.5"_s);
        QTRY_COMPARE(m_recorder.names(), (QStringList{u"RefreshMenu"_s, u"PlayEvent"_s}));
        QCOMPARE(m_recorder.last(u"PlayEvent"_s).userInfo->value(u"Event").textValue(), u"3"_s);

        m_recorder.clear();
        m_tab->table.selectRow_byExtendingSelection(-1, false);
        QCOMPARE(m_tab->label.text(), u"Set volume:"_s);
        QCOMPARE(m_tab->slider.floatValue(), 0.75F);
        m_tab->slider.setValue(m_tab->slider.maximum());
        QCOMPARE(BYGlobals::clippingsDictionary()->value(DocumentKey::setVolume).string(), u"1"_s);
        QTRY_COMPARE(m_recorder.names(), QStringList{u"RefreshMenu"_s});
    }

    void alertRowWithoutSoundServerLogsAndWorksOn()
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u" GetSysBeepVolume err = -\\d+"_s));
        m_tab->table.selectRow_byExtendingSelection(1, false);
        QCOMPARE(m_tab->label.text(), u"Alert volume:"_s);
        m_tab->slider.setValue(m_tab->slider.maximum() / 2);
        QCOMPARE(entryAt(1)->value(EventKey::volume).string(), u"0.25"_s);
        QTRY_COMPARE(m_recorder.last(u"PlayEvent"_s).name, u"PlayEvent"_s);
    }

    void removalAsksUnlessCommandDelete()
    {
        m_tab->table.setFocus();
        m_tab->table.selectRow_byExtendingSelection(0, false);
        QString question;
        ModalDriver cancel([&question](QWidget* modal) {
            question = qobject_cast<QMessageBox*>(modal)->informativeText();
            ModalDriver::click(u"Cancel"_s)(modal);
        });
        QTest::keyClick(&m_tab->table, Qt::Key_Delete);
        QVERIFY(cancel.wasAnswered());
        QCOMPARE(
            question, u"Are you sure you wish to remove this sound?\nYou will not be able to undo this operation."_s);
        QCOMPARE(entryAt(0)->value(EventKey::soundFilepath).string(), m_sound);

        // The offscreen platform gives the focus back only when it is asked to.
        m_tab->table.activateWindow();
        QTRY_VERIFY(m_tab->table.hasFocus());
        QTest::keyClick(&m_tab->table, Qt::Key_Delete, Qt::ControlModifier);
        QCOMPARE(storedEntryAt(0)->value(EventKey::soundFilepath).string(), QString());
        QVERIFY(gConfirmRemove);
    }

    void commandDeleteWithoutRowLeavesTheNextRemovalUnasked()
    {
        QTest::keyClick(&m_tab->table, Qt::Key_Delete, Qt::ControlModifier);
        QVERIFY(!gConfirmRemove);
        m_tab->table.selectRow_byExtendingSelection(0, false);
        QTest::keyClick(&m_tab->table, Qt::Key_Delete);
        QCOMPARE(entryAt(0)->value(EventKey::soundFilepath).string(), QString());
    }

    void copiedSoundIsPastedOnAnotherRow()
    {
        m_tab->table.selectRow_byExtendingSelection(0, false);
        QTest::keyClick(&m_tab->table, Qt::Key_C, Qt::ControlModifier);
        m_tab->table.selectRow_byExtendingSelection(2, false);
        QTest::keyClick(&m_tab->table, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(storedEntryAt(3)->value(EventKey::soundFilepath).string(), m_sound);
        QTRY_COMPARE(m_recorder.names(), QStringList{u"RefreshMenu"_s});
    }

    void toggleClearsThenOpensThePanel()
    {
        m_tab->table.selectRow_byExtendingSelection(0, false);
        QTest::keyClick(&m_tab->table, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(entryAt(0)->value(EventKey::soundFilepath).string(), QString());

        QString shownEvent;
        ModalDriver choose([&](QWidget* modal) {
            shownEvent = m_tab->controller.myOpenPanelViewChosenEventLabel->text();
            auto* name = modal->findChild<QLineEdit*>(u"fileNameEdit"_s);
            QVERIFY(name != nullptr);
            BYGlobals::fillArray(); // as when the helper has changed the document
            name->setText(m_sound);
            QTest::keyClick(name, Qt::Key_Return);
        });
        QTest::keyClick(&m_tab->table, Qt::Key_A, Qt::ControlModifier);
        QVERIFY(choose.wasAnswered());
        QCOMPARE(shownEvent, u"Trash emptied"_s);
        QCOMPARE(storedEntryAt(0)->value(EventKey::soundFilepath).string(), m_sound);
    }

    void dropGoesToTheFirstEntryOfThatEvent_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("row");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("sound file") << u"a.wav"_s << 1 << true;
        QTest::newRow("capitals") << u"a.WAV"_s << 1 << false;
        QTest::newRow("no extension") << u"folder"_s << 1 << true;
        QTest::newRow("folder with a slash") << u"folder/"_s << 1 << true;
        QTest::newRow("below the last row") << u"a.wav"_s << 3 << false;
    }

    void dropGoesToTheFirstEntryOfThatEvent()
    {
        QFETCH(QString, name);
        QFETCH(int, row);
        QFETCH(bool, accepted);
        const QString path = m_folder->filePath(name);
        QCOMPARE(m_tab->drop(path, row), accepted);
        QCOMPARE(
            storedEntryAt(1)->value(EventKey::soundFilepath).string(), accepted ? QDir::cleanPath(path) : QString());
    }

private:
    DictionaryPointer entryAt(int row) const { return DocumentEntry::at(BYGlobals::soundsPrefsArray(), row); }

    DictionaryPointer storedEntryAt(int row) const
    {
        Changes::finish();
        QFile file(BYGlobals::defaultFilePath());
        if (!file.open(QIODevice::ReadOnly)) {
            return {};
        }
        const Value root = *PropertyList::read(file.readAll());
        return DocumentEntry::at(root.dictionary()->value(DocumentKey::sounds).array(), row);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_sound;
    std::unique_ptr<TabFixture> m_tab;
    NotificationRecorder m_recorder;
};

QTEST_MAIN(EventsTest)
#include "EventsTest.moc"
