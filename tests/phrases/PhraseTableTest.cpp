// SPDX-License-Identifier: MIT
#include "PhrasesTabFixture.h"

#include <core/BYGlobals.h>
#include <core/Phrase.h>
#include <core/PhraseList.h>
#include <core/SharedNames.h>
#include <platform/controls/Pasteboard.h>
#include <platform/desktop/Bundle.h>
#include <platform/sound/Sound.h>

#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QTest>

#include <Files.h>
#include <ModalDriver.h>
#include <SoundFixtures.h>
#include <SoundServerControl.h>

#include <numeric>

using namespace Qt::StringLiterals;

using PropertyList::DictionaryPointer;
using PropertyList::Value;

class PhraseTableTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void initTestCase()
    {
        QFile(m_bundle.filePath(u"boing.wav"_s)).open(QIODevice::WriteOnly);
        Bundle::registerBundle(m_bundle.path());
    }

    void init()
    {
        m_sound = m_bundle.filePath(u"boing.wav"_s);
        m_tab = std::make_unique<PhrasesTabFixture>(QList<Value>{phraseEntry(u"cherry"_s, m_sound),
            phraseEntry(u"Banana"_s, u""_s, u"/Applications/Notes.app"_s), phraseEntry(u"apple"_s, u"/gone/zip.aiff"_s),
            u"no entry"_s});
    }

    void cleanup() { m_tab.reset(); }

    void setUpShowsDocumentAndSettings()
    {
        // The form itself shows what goes without saying.
        m_tab->table->menuPrefsMatrix->setState_atRow_column(true, 0, 0);
        m_tab->table->iTunesAnnouncerPrefMatrix->setState_atRow_column(true, 0, 2);
        m_tab->table->sortPrefsMatrix->setState_atRow_column(true, 0, 2);
        m_tab->table->updateSettingsFromPrefs();
        QCOMPARE(m_tab->table->numberOfRows(), 4);
        QCOMPARE(m_tab->table->numClippings->text(), u"4 clippings"_s);
        QCOMPARE(m_tab->table->menuPrefsMatrix->selectedRow(), 3);
        QCOMPARE(m_tab->table->iTunesAnnouncerPrefMatrix->selectedColumn(), 1);
        QCOMPARE(m_tab->table->sortPrefsMatrix->selectedColumn(), 0);
        QCOMPARE(m_tab->table->myVolumeSlider->floatValue(), 0.5F);
        QVERIFY(!m_tab->editPane->isVisible());
        QVERIFY(!m_tab->table->removeAbb->isEnabled());
    }

    void firstStartUsesTheDefaultDocumentOnce()
    {
        const QString path = m_bundle.path() + u"/Contents/Resources/default.blipsy"_s;
        for (int start = 0; start < 2; ++start) {
            BYGlobals::storeSetting({}, Settings::defaultFilePath.key);
            BYGlobals::storeSetting({}, Settings::recentFiles.key);
            BYTableView table;
            table.awakeFromNib();
            QCOMPARE(BYGlobals::retrieveFromUserDefaults(Settings::defaultFilePath.key).string(), path);
            QCOMPARE(BYGlobals::retrieveArrayFromUserDefaults(Settings::recentFiles.key).array()->size(), 1);
        }
    }

    void cellsShowTheEntry_data()
    {
        QTest::addColumn<QString>("column");
        QTest::addColumn<Value>("stored");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<bool>("dimmed");
        const auto row = [](const char* name, const QString& column, const Value& stored, const QString& shown,
                             bool dimmed) { QTest::newRow(name) << column << stored << shown << dimmed; };
        row("phrase", u"Phrase"_s, u"a/b"_s, u"a/b"_s, false);
        row("a sound's file name", u"SoundFilepath"_s, m_bundle.filePath(u"boing.wav"_s), u"boing.wav"_s, false);
        row("missing sound", u"SoundFilepath"_s, u"/gone/zip.aiff"_s, u"zip.aiff"_s, true);
        row("folder", u"SoundFilepath"_s, QString(m_bundle.path() + u'/'), m_bundle.path().section(u'/', -1), false);
        row("text without a slash", u"SoundFilepath"_s, u"some text"_s, u"some text"_s, true);
        row("picture", u"SoundFilepath"_s, u"/x/\uFFFC and \uFFFC"_s, u"(Picture) and (Picture)"_s, true);
        row("no sound", u"SoundFilepath"_s, u""_s, u""_s, false);
        row("no text", u"Phrase"_s, QByteArray("data"), u""_s, false);
    }

    void cellsShowTheEntry()
    {
        QFETCH(QString, column);
        QFETCH(Value, stored);
        QFETCH(bool, dimmed);
        m_tab->entryCalled(u"cherry"_s)->insert(column, stored);
        const int row = 3;
        QTEST(m_tab->cell(column, row).toString(), "shown");
        const int shownColumn = column == PhraseKey::phrase ? 1 : 2;
        QCOMPARE(m_tab->table->model()->index(row, shownColumn).data(Qt::ForegroundRole).isValid(), dimmed);
        if (column == PhraseKey::soundFilepath) {
            const QString toolTip = m_tab->table->tableView_toolTipForTableColumn_row(m_tab->table, column, row);
            QVERIFY(toolTip.startsWith(stored.string()));
            QCOMPARE(toolTip.contains(u"cannot be found"), dimmed);
        }
    }

    void brokenEntryIsShownEmptyAndLeftAlone()
    {
        const int row = brokenRow();
        for (const QString& column : {u"App"_s, u"Phrase"_s, u"SoundFilepath"_s, u"Play"_s, u"Reveal"_s, u"Trash"_s}) {
            QVERIFY(!m_tab->cell(column, row).isValid());
            m_tab->table->tableView_setObjectValue_forTableColumn_row(m_tab->table, u"x"_s, column, row);
        }
        m_tab->table->selectRow_byExtendingSelection(row, false);
        for (const Qt::Key key : {Qt::Key_A, Qt::Key_C, Qt::Key_V}) {
            QTest::keyClick(m_tab->table, key, Qt::ControlModifier);
        }
        QCOMPARE(BYGlobals::clippingsArray()->at(row).string(), u"no entry"_s);
    }

    void typedPhraseIsStoredAndTheHelperTold()
    {
        const int row = PhraseList::rowOfPhrase(BYGlobals::clippingsArray(), u"Banana");
        m_tab->table->editColumn_row_withEvent_select(1, row, nullptr, true);
        auto* editor = m_tab->table->findChild<QLineEdit*>(u"FieldEditor"_s);
        QVERIFY(editor);
        QTest::keyClicks(editor, u"zebra"_s);
        QTest::keyClick(editor, Qt::Key_Return);
        QCOMPARE(phrasesIn(m_tab->storedPhrases()).at(row), u"zebra"_s);
        QCOMPARE(BYGlobals::lastEditedAbb(), u"zebra"_s);
        m_tab->settle();
        QStringList heard = m_tab->recorder.names();
        QCOMPARE(heard.removeAll(NotificationName::refreshMenu), 3);
        heard.removeAll(NotificationName::accessibilityIsOff);
        QCOMPARE(heard, (QStringList{u"TurnExpansionOff"_s, u"TurnExpansionOn"_s, u"Preferences Changed"_s}));
    }

    void applicationIsClearedOnlyWhenTheUserAgrees_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<bool>("kept");
        QTest::newRow("clear") << u"Clear"_s << false;
        QTest::newRow("cancel") << u"Cancel"_s << true;
    }

    void applicationIsClearedOnlyWhenTheUserAgrees()
    {
        QFETCH(QString, button);
        QFETCH(bool, kept);
        ModalDriver answer(ModalDriver::click(button));
        QTest::mouseClick(m_tab->table->viewport(), Qt::LeftButton, {}, m_tab->pointOf(rowOf(u"Banana"_s), 0));
        QVERIFY(answer.wasAnswered());
        QCOMPARE(m_tab->entryCalled(u"Banana"_s)->contains(PhraseKey::app), kept);
        m_tab->settle();
        QVERIFY(m_tab->recorder.names().contains(u"RefreshAppsArray"_s));
        QVERIFY(m_tab->recorder.names().contains(u"Preferences Changed"_s));
    }

    void newRowsComeBackThroughTheBus()
    {
        m_tab->entryCalled(u"apple"_s)->insert(PhraseKey::phrase, u"newabb"_s);
        m_tab->table->addRow(nullptr);
        m_tab->table->addRow(nullptr);
        QCOMPARE(m_tab->table->numberOfRows(), 4);
        m_tab->settle();
        QCOMPARE(m_tab->table->numberOfRows(), 6);
        QCOMPARE(phrasesIn(m_tab->storedPhrases()).count(u"my new phrase"_s), 2);
        QCOMPARE(m_tab->entryCalled(u"my new phrase"_s)->value(PhraseKey::soundFilepath).string(),
            m_bundle.path() + u"/Contents/Resources/defaultPhraseSound.aif"_s);
        // Without a translation the row looked for is the one with the key's own text.
        QCOMPARE(m_tab->table->selectedRow(), rowOf(u"newabb"_s));
        QVERIFY(m_tab->table->isEditing());
    }

    void removalAsksUnlessCommandDelete()
    {
        m_tab->table->selectRow_byExtendingSelection(rowOf(u"Banana"_s), false);
        ModalDriver cancel(ModalDriver::click(u"Cancel"_s));
        QTest::keyClick(m_tab->table, Qt::Key_Delete);
        QVERIFY(cancel.wasAnswered());
        QVERIFY(m_tab->entryCalled(u"Banana"_s));
        m_tab->window->activateWindow();
        QTRY_VERIFY(m_tab->table->hasFocus());

        const int row = rowOf(u"Banana"_s);
        QTest::keyClick(m_tab->table, Qt::Key_Backspace, Qt::ControlModifier);
        QVERIFY(!m_tab->entryCalled(u"Banana"_s));
        QCOMPARE(m_tab->table->selectedRow(), row - 1);
        QTRY_VERIFY(!phrasesIn(m_tab->storedPhrases()).contains(u"Banana"_s));

        ModalDriver remove(ModalDriver::click(u"Remove"_s));
        QTest::keyClick(m_tab->table, Qt::Key_Delete);
        QVERIFY(remove.wasAnswered());
    }

    void removingTheFirstRowLeavesNoneSelected()
    {
        m_tab->table->selectRow_byExtendingSelection(0, false);
        QVERIFY(m_tab->editPane->isVisible());
        gConfirmRemove = false;
        m_tab->table->removeRow(nullptr);
        QCOMPARE(m_tab->table->selectedRow(), -1);
        QVERIFY(!m_tab->editPane->isVisible());
        QVERIFY(gConfirmRemove);
    }

    void rowsStayWhileACellIsEdited()
    {
        m_tab->table->selectRow_byExtendingSelection(0, false);
        editEntryInProgress = true;
        QTest::ignoreMessage(QtInfoMsg, "remove row called but editEntryInProgress");
        m_tab->table->removeRow(nullptr);
        m_tab->table->addRow(nullptr);
        QCOMPARE(BYGlobals::clippingsArray()->size(), 4);
    }

    void helperMovesControlsAndRows()
    {
        m_tab->table->onOffRadioButton->setState_atRow_column(true, 0, 0);
        const DictionaryPointer userInfo = PropertyList::Dictionary::create();
        userInfo->insert(PhraseKey::phrase, u"cherry"_s);
        BYGlobals::sendNotification(NotificationName::scrollToAbb, userInfo);
        BYGlobals::sendNotification(NotificationName::keepRich);
        BYGlobals::sendNotification(NotificationName::byeBye);
        m_tab->settle();
        QCOMPARE(m_tab->table->selectedRow(), rowOf(u"cherry"_s));
        QCOMPARE(m_tab->table->plainOrRichRadioButton->selectedColumn(), 1);
        QCOMPARE(m_tab->table->onOffRadioButton->selectedColumn(), 1);
    }

    void clickOnTheSoundCellClearsThenOpensThePanel()
    {
        const int row = rowOf(u"cherry"_s);
        const auto clickSound = [this, row] {
            QTest::mouseClick(m_tab->table->viewport(), Qt::LeftButton, {}, m_tab->pointOf(row, 5));
        };
        clickSound();
        QCOMPARE(DocumentEntry::at(m_tab->storedPhrases(), row)->value(PhraseKey::soundFilepath), Value(u""_s));

        QString shownPhrase;
        bool canPlay = false;
        ModalDriver choose([&](QWidget* modal) {
            auto* name = modal->findChild<QLineEdit*>(u"fileNameEdit"_s);
            shownPhrase = m_tab->table->myOpenPanelViewChosenEventLabel->text();
            canPlay = m_tab->table->myPlayButton->isEnabled();
            name->setText(m_sound);
            QTest::keyClick(name, Qt::Key_Return);
        });
        clickSound();
        QVERIFY(choose.wasAnswered());
        QCOMPARE(shownPhrase, u"cherry"_s);
        QVERIFY(!canPlay);
        QCOMPARE(DocumentEntry::at(m_tab->storedPhrases(), row)->value(PhraseKey::soundFilepath), Value(m_sound));
    }

    /// What sounded before the panel came up is no part of the preview.
    void previewFallsSilentOnStopAndAtTheEndOfThePanel()
    {
        QTemporaryDir folder;
        Files::write(folder.filePath(u"long.aiff"_s), SoundFixtures::aiff(440, 20));
        const int row = rowOf(u"cherry"_s);
        DocumentEntry::at(BYGlobals::clippingsArray(), row)->insert(PhraseKey::soundFilepath, u""_s);
        ModalDriver preview([&](QWidget* modal) {
            const auto close = qScopeGuard([modal] { modal->close(); });
            qobject_cast<QFileDialog*>(modal)->setDirectory(folder.path());
            auto* list = modal->findChild<QListView*>(u"listView"_s);
            QTRY_COMPARE(list->model()->rowCount(list->rootIndex()), 1);
            list->setCurrentIndex(list->model()->index(0, 0, list->rootIndex()));
            QVERIFY(m_tab->table->myPlayButton->isEnabled());
            const auto playTwice = [this] {
                m_tab->table->myPlayButton->click();
                m_tab->table->myPlayButton->click();
            };
            playTwice();
            QTRY_COMPARE(streamCount(), 3);
            QVERIFY(m_tab->table->myStopButton->isEnabled());
            m_tab->table->myStopButton->click();
            QTRY_COMPARE(streamCount(), 1);
            QVERIFY(!m_tab->table->myStopButton->isEnabled());
            playTwice();
            QTRY_COMPARE(streamCount(), 3);
        });
        const auto before = BYGlobals::playSoundForPhrase(folder.filePath(u"long.aiff"_s));
        m_tab->table->handleAssignSoundDialog_row(nullptr, row);
        QVERIFY(preview.wasAnswered());
        QTRY_COMPARE(streamCount(), 1);
        before->stop();
        QTRY_COMPARE(streamCount(), 0);
    }

    void dropGivesTheRowItsSound()
    {
        QMimeData data;
        data.setUrls({QUrl(u"file://localhost/x/a%20b/"_s)});
        const Pasteboard pasteboard(&data);
        const auto drop = [this, &pasteboard](int row) {
            return m_tab->table->tableView_acceptDrop_row_dropOperation(
                m_tab->table, pasteboard, row, DropOperation::On);
        };
        QVERIFY(!drop(brokenRow()));
        const PropertyList::ArrayPointer phrases = BYGlobals::clippingsArray();
        phrases->removeAt(0);
        phrases->append(phraseEntry(u"first"_s, u""_s));
        std::vector<size_t> order(size_t(phrases->size()));
        std::iota(order.begin() + 1, order.end(), 0U);
        order.front() = order.size() - 1;
        phrases->reorder(order);
        for (const int row : {-1, 1}) {
            QVERIFY(drop(row));
            const DictionaryPointer stored = DocumentEntry::at(m_tab->storedPhrases(), std::max(row, 0));
            QCOMPARE(stored->value(PhraseKey::soundFilepath).string(), u"/x/a b"_s);
        }
        QCOMPARE(m_tab->table->tableView_validateDrop_proposedRow_proposedDropOperation(
                     m_tab->table, pasteboard, 4, DropOperation::Above),
            Qt::IgnoreAction);
    }

private:
    static qsizetype streamCount()
    {
        return SoundServerControl::control({u"list"_s, u"short"_s, u"sink-inputs"_s}).value_or("").count('\n');
    }

    static int rowOf(const QString& phrase) { return PhraseList::rowOfPhrase(BYGlobals::clippingsArray(), phrase); }

    static int brokenRow()
    {
        int row = 0;
        while (BYGlobals::clippingsArray()->at(row).dictionary()) {
            ++row;
        }
        return row;
    }

    QTemporaryDir m_bundle;
    QString m_sound;
    std::unique_ptr<PhrasesTabFixture> m_tab;
};

QTEST_MAIN(PhraseTableTest)
#include "PhraseTableTest.moc"
