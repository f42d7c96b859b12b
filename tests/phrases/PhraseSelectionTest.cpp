// SPDX-License-Identifier: MIT
#include "PhrasesTabFixture.h"

#include <core/BYGlobals.h>
#include <core/PhraseList.h>
#include <core/SharedNames.h>
#include <phrases/RecentDocuments.h>

#include <QLineEdit>
#include <QTest>

#include <ModalDriver.h>

using namespace Qt::StringLiterals;

using PropertyList::DictionaryPointer;
using PropertyList::Value;

/// Text that was not saved, while the selection moves in every way it can.
class PhraseSelectionTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_tab = std::make_unique<PhrasesTabFixture>(QList<Value>{
            phraseEntry(u"a"_s, u"/a.wav"_s), phraseEntry(u"b"_s, u"/b.wav"_s), phraseEntry(u"c"_s, u"/c.wav"_s)});
    }

    void cleanup() { m_tab.reset(); }

    void unsavedTextIsSavedOrDroppedHoweverTheSelectionMoves_data()
    {
        QTest::addColumn<std::function<void(PhrasesTabFixture&)>>("move");
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("selected");
        using Move = std::function<void(PhrasesTabFixture&)>;
        const auto rows = [](const char* name, const Move& move, const QString& selected) {
            QTest::addRow("%s, save", name) << move << u"Save"_s << selected;
            QTest::addRow("%s, discard", name) << move << u"Discard"_s << selected;
        };
        rows(
            "mouse",
            [](PhrasesTabFixture& tab) {
                QTest::mouseClick(tab.table->viewport(), Qt::LeftButton, {}, tab.pointOf(2, 1));
            },
            u"c"_s);
        rows(
            "keyboard", [](PhrasesTabFixture& tab) { QTest::keyClick(tab.table, Qt::Key_Up); }, u"a"_s);
        rows(
            "type-ahead", [](PhrasesTabFixture& tab) { QTest::keyClick(tab.table, Qt::Key_C); }, u"c"_s);
        rows(
            "composed character",
            [](PhrasesTabFixture& tab) {
                QInputMethodQueryEvent query(Qt::ImEnabled);
                QCoreApplication::sendEvent(tab.table, &query);
                QInputMethodEvent composed;
                composed.setCommitString(query.value(Qt::ImEnabled).toBool() ? u"c"_s : QString());
                QCoreApplication::sendEvent(tab.table, &composed);
            },
            u"c"_s);
        rows(
            "code", [](PhrasesTabFixture& tab) { tab.table->selectRow_byExtendingSelection(-1, false); }, QString());
        rows(
            "closing the window", [](PhrasesTabFixture& tab) { tab.table->willUnselect(); }, u"b"_s);
        rows(
            "phrase added by the helper", [](PhrasesTabFixture& tab) { addBehindTheTable(tab, u"aa"_s); }, u"aa"_s);
    }

    void unsavedTextIsSavedOrDroppedHoweverTheSelectionMoves()
    {
        QFETCH(std::function<void(PhrasesTabFixture&)>, move);
        QFETCH(QString, answer);
        QFETCH(QString, selected);
        typeIntoPaneOf(1);
        QString question;
        ModalDriver driver([&](QWidget* modal) {
            question = modal->property("informativeText").toString();
            ModalDriver::click(answer)(modal);
        });
        move(*m_tab);
        m_tab->settle();
        QVERIFY(driver.wasAnswered());
        QVERIFY2(question.contains(u"'b'"), qPrintable(question));
        QCOMPARE(soundOf(u"b"_s), answer == u"Save" ? u"X/b.wav"_s : u"/b.wav"_s);
        QCOMPARE(soundOf(u"a"_s), u"/a.wav"_s);
        QCOMPARE(soundOf(u"c"_s), u"/c.wav"_s);
        verifyPaneShows(selected);
    }

    void removedPhraseTakesItsUnsavedTextWithIt()
    {
        typeIntoPaneOf(2);
        gConfirmRemove = false;
        m_tab->table->removeRow(nullptr);
        verifyPaneShows(u"b"_s);
    }

    void unsavedTextGoesToTheDocumentThatIsLeft()
    {
        m_tab->writePhrases({phraseEntry(u"other"_s, u""_s)}, u"other.blipsy"_s);
        RecentDocuments::add(m_tab->path(u"other.blipsy"_s));
        m_tab->table->updateClippingsPopUpButton();
        typeIntoPaneOf(0);
        ModalDriver save(ModalDriver::click(u"Save"_s));
        m_tab->popUp->setCurrentIndex(0);
        Q_EMIT m_tab->popUp->activated(0);
        QVERIFY(save.wasAnswered());
        QCOMPARE(m_tab->table->numberOfRows(), 1);
        verifyPaneShows({});
        m_tab->table->useDocument(m_tab->path(u"test.blipsy"_s));
        QCOMPARE(soundOf(u"a"_s), u"X/a.wav"_s);
    }

    void sortingKeepsPhraseAndUnsavedText()
    {
        typeIntoPaneOf(0);
        m_tab->entry(0)->insert(PhraseKey::phrase, u"z"_s);
        m_tab->table->addRow(nullptr);
        m_tab->settle();
        QCOMPARE(m_tab->table->selectedRow(), 3);
        QCOMPARE(BYGlobals::selectedClippingRowForEditing(), 3);
        QCOMPARE(m_tab->editPane->string(), u"X/a.wav"_s);
        QVERIFY(BYGlobals::editEntryPaneTextIsDirty());
    }

    void helpersPhraseWaitsForTheUser_data()
    {
        QTest::addColumn<std::function<void(PhrasesTabFixture&, const Meanwhile&)>>("use");
        QTest::addColumn<bool>("hasTwin");
        QTest::addColumn<QStringList>("changed");
        const auto answering = [](const QString& button, const Meanwhile& meanwhile) {
            return std::make_unique<ModalDriver>([button, meanwhile](QWidget* modal) {
                meanwhile();
                ModalDriver::click(button)(modal);
            });
        };
        const auto row = [](const char* name, const std::function<void(PhrasesTabFixture&, const Meanwhile&)>& use,
                             const QStringList& changed) {
            QTest::newRow(name) << use << false << changed;
            QTest::addRow("%s, second of its phrase", name) << use << true << changed;
        };
        row("question about unsaved text",
            [answering](PhrasesTabFixture& tab, const Meanwhile& meanwhile) {
                const auto driver = answering(u"Save"_s, meanwhile);
                tab.table->selectRow_byExtendingSelection(2, false);
            },
            {u"b X/b.wav"_s});
        row("question about an application",
            [answering](PhrasesTabFixture& tab, const Meanwhile& meanwhile) {
                const auto driver = answering(u"Clear"_s, meanwhile);
                tab.entry(1)->insert(PhraseKey::app, u"/x.app"_s);
                QTest::mouseClick(tab.table->viewport(), Qt::LeftButton, {}, tab.pointOf(1, 0));
            },
            {u"b X/b.wav"_s});
        row("removal",
            [answering](PhrasesTabFixture& tab, const Meanwhile& meanwhile) {
                const auto driver = answering(u"Remove"_s, meanwhile);
                tab.table->removeRow(nullptr);
            },
            {});
        row("typing into a cell",
            [](PhrasesTabFixture& tab, const Meanwhile& meanwhile) {
                tab.table->editColumn_row_withEvent_select(1, 1, nullptr, true);
                auto* const editor = tab.table->findChild<QLineEdit*>(u"FieldEditor"_s);
                QTest::keyClicks(editor, u"bee"_s);
                meanwhile();
                QTest::keyClick(editor, Qt::Key_Return);
            },
            {u"bee X/b.wav"_s});
    }

    void helpersPhraseWaitsForTheUser()
    {
        QFETCH(const std::function<void(PhrasesTabFixture&, const Meanwhile&)>, use);
        QFETCH(const bool, hasTwin);
        QFETCH(const QStringList, changed);
        if (hasTwin) {
            m_tab->entry(0)->insert(PhraseKey::phrase, u"b"_s);
            BYGlobals::writeDocument();
        }
        typeIntoPaneOf(1);
        int rowsMeanwhile = 0;
        use(*m_tab, [&] {
            addBehindTheTable(*m_tab, u"aa"_s);
            m_tab->settle();
            rowsMeanwhile = m_tab->table->numberOfRows();
        });
        QCOMPARE(rowsMeanwhile, 3);
        const ModalDriver laterQuestion(ModalDriver::click(u"Save"_s));
        m_tab->settle();
        QStringList found;
        const PropertyList::ArrayPointer phrases = m_tab->storedPhrases();
        for (const Value& value : *phrases) {
            const DictionaryPointer entry = value.dictionary();
            found.append(
                entry->value(PhraseKey::phrase).string() + u' ' + entry->value(PhraseKey::soundFilepath).string());
        }
        found.sort();
        QStringList stored{hasTwin ? u"b /a.wav"_s : u"a /a.wav"_s, u"aa /aa.wav"_s, u"c /c.wav"_s};
        // The pane shows the text of the first of its phrase.
        stored += QStringList(changed).replaceInStrings(u"/b.wav"_s, hasTwin ? u"/a.wav"_s : u"/b.wav"_s);
        stored.sort();
        QCOMPARE(found, stored);
        verifyPaneShows(u"aa"_s);
    }

private:
    using Meanwhile = std::function<void()>;

    /// The helper's way: the document on disk changes, then a notification tells.
    static void addBehindTheTable(PhrasesTabFixture& tab, const QString& phrase)
    {
        const PropertyList::ArrayPointer phrases = tab.storedPhrases();
        phrases->append(phraseEntry(phrase, u"/%1.wav"_s.arg(phrase)));
        const DictionaryPointer root = PropertyList::Dictionary::create();
        root->insert(DocumentKey::clippings, phrases);
        tab.write(u"test.blipsy"_s, root);
        const DictionaryPointer userInfo = PropertyList::Dictionary::create();
        userInfo->insert(PhraseKey::phrase, phrase);
        BYGlobals::sendNotification(NotificationName::newRowAddedViaMenu, userInfo);
    }

    void typeIntoPaneOf(int row)
    {
        m_tab->table->selectRow_byExtendingSelection(row, false);
        QTest::keyClick(m_tab->editPane, u'X');
        QVERIFY(BYGlobals::editEntryPaneTextIsDirty());
        QVERIFY(m_tab->table->saveEditedAbbButton->isEnabled());
        m_tab->table->setFocus();
    }

    QString soundOf(const QString& phrase) const
    {
        const DictionaryPointer entry = m_tab->entryCalled(phrase);
        return entry ? entry->value(PhraseKey::soundFilepath).string() : QString();
    }

    /// Table, selection and edit pane agree: on this phrase, or on none for a null text.
    void verifyPaneShows(const QString& phrase)
    {
        const int row = phrase.isNull() ? -1 : PhraseList::rowOfPhrase(BYGlobals::clippingsArray(), phrase);
        QCOMPARE(m_tab->table->selectedRow(), row);
        QCOMPARE(BYGlobals::selectedClippingRowForEditing(), row);
        QCOMPARE(m_tab->editPane->isVisible(), row >= 0);
        QCOMPARE(m_tab->editPane->string(), row >= 0 ? soundOf(phrase) : QString());
        QVERIFY(!BYGlobals::editEntryPaneTextIsDirty());
        QVERIFY(!m_tab->table->saveEditedAbbButton->isEnabled());
    }

    std::unique_ptr<PhrasesTabFixture> m_tab;
};

QTEST_MAIN(PhraseSelectionTest)
#include "PhraseSelectionTest.moc"
