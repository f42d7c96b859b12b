#include "PhraseListPrinter.h"
#include "PhrasesTabFixture.h"
#include "RecentDocuments.h"

#include <QAbstractItemView>
#include <QFile>
#include <QLineEdit>
#include <QPrinter>
#include <QTest>

#include <BYGlobals.h>
#include <ModalDriver.h>
#include <SharedNames.h>

using namespace Qt::StringLiterals;

using PropertyList::DictionaryPointer;
using PropertyList::Value;

class PhraseDocumentsTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_tab = std::make_unique<PhrasesTabFixture>(QList<Value>{phraseEntry(u"a"_s, u""_s)});
        const DictionaryPointer root = PropertyList::Dictionary::create();
        const PropertyList::ArrayPointer phrases = PropertyList::Array::create();
        phrases->append(phraseEntry(u"other"_s, u""_s));
        root->insert(DocumentKey::clippings, phrases);
        m_tab->write(u"other.blipsy"_s, root);
        RecentDocuments::store(
            {m_tab->path(u"gone.blipsy"_s), m_tab->path(u"test.blipsy"_s), m_tab->path(u"other.blipsy"_s)});
        m_tab->table->updateClippingsPopUpButton();
    }

    void cleanup() { m_tab.reset(); }

    void popUpListsTheNewestFirstAndForgetsWhatIsGone()
    {
        QCOMPARE(
            titles(), (QStringList{u"other"_s, u"test"_s, u""_s, u"Print…"_s, u"Open…"_s, u"New sounds document…"_s}));
        QCOMPARE(m_tab->popUp->currentText(), u"test"_s);
        QCOMPARE(m_tab->popUp->toolTip(), m_tab->path(u"test.blipsy"_s));
        QCOMPARE(RecentDocuments::list()->size(), 2);
    }

    void chosenDocumentIsTheOneInUse()
    {
        choose(0);
        QCOMPARE(m_tab->table->numberOfRows(), 1);
        QVERIFY(m_tab->entryCalled(u"other"_s));
        QCOMPARE(
            BYGlobals::retrieveFromUserDefaults(SettingKey::defaultFilePath).string(), m_tab->path(u"other.blipsy"_s));
        QCOMPARE(m_tab->popUp->currentText(), u"other"_s);
        QTRY_VERIFY(m_tab->recorder.names().contains(u"Preferences Changed"_s));
    }

    void commandForgetsAnyDocumentButTheOneInUse()
    {
        choose(1, Qt::ControlModifier);
        QCOMPARE(RecentDocuments::list()->size(), 2);
        choose(0, Qt::ControlModifier);
        QCOMPARE(RecentDocuments::list(), QStringList{m_tab->path(u"test.blipsy"_s)});
        QVERIFY(m_tab->entryCalled(u"a"_s));
        QVERIFY(QFile::exists(m_tab->path(u"other.blipsy"_s)));
    }

    void unsavedTextGoesToTheDocumentThatIsLeft()
    {
        m_tab->table->selectRow_byExtendingSelection(0, false);
        QTest::keyClick(m_tab->editPane, u'X');
        ModalDriver save(ModalDriver::click(u"Save"_s));
        m_tab->table->useDocument(m_tab->path(u"other.blipsy"_s));
        QVERIFY(save.wasAnswered());
        QCOMPARE(m_tab->table->selectedRow(), -1);
        QVERIFY(!m_tab->editPane->isVisible());
        m_tab->table->useDocument(m_tab->path(u"test.blipsy"_s));
        QCOMPARE(m_tab->entry(0)->value(PhraseKey::soundFilepath).string(), u"X"_s);
    }

    void newDocumentHasOnePhrase()
    {
        ModalDriver name(nameFile(m_tab->path(u"mine.Blipsy"_s)));
        choose(m_tab->popUp->count() - 1);
        QVERIFY(name.wasAnswered());
        QCOMPARE(BYGlobals::defaultFilePath(), m_tab->path(u"mine.Blipsy.Blipsy"_s));
        QCOMPARE(phrasesIn(m_tab->storedPhrases()), QStringList{u"newPhrase"_s});
        QCOMPARE(m_tab->popUp->itemText(0), u"mine.Blipsy"_s);
    }

    void cancelledPanelsChangeNothing()
    {
        for (const int item : {m_tab->popUp->count() - 1, m_tab->popUp->count() - 2}) {
            ModalDriver cancel([](QWidget* modal) { QTest::keyClick(modal, Qt::Key_Escape); });
            choose(item);
            QVERIFY(cancel.wasAnswered());
            QCOMPARE(BYGlobals::defaultFilePath(), m_tab->path(u"test.blipsy"_s));
            QCOMPARE(m_tab->popUp->currentText(), u"test"_s);
        }
    }

    void importedFileBecomesTheDocument()
    {
        const DictionaryPointer item = PropertyList::Dictionary::create();
        item->insert(u"abbr"_s, u"brb"_s);
        const PropertyList::ArrayPointer items = PropertyList::Array::create();
        items->append(item);
        const DictionaryPointer root = PropertyList::Dictionary::create();
        root->insert(u"entries"_s, items);
        m_tab->write(u"words.xml"_s, root);

        std::unique_ptr<ModalDriver> saveAs;
        ModalDriver open([&](QWidget* modal) {
            saveAs = std::make_unique<ModalDriver>(nameFile(m_tab->path(u"imported"_s)));
            nameFile(m_tab->path(u"words.xml"_s))(modal);
        });
        choose(m_tab->popUp->count() - 2);
        QVERIFY(saveAs && saveAs->wasAnswered());
        QCOMPARE(phrasesIn(m_tab->storedPhrases()), QStringList{u"brb"_s});
        QCOMPARE(m_tab->popUp->currentText(), u"imported"_s);
        QVERIFY(!BYGlobals::soundsPrefsArray());
    }

    void printedListHasAsManyPagesAsItNeeds()
    {
        QList<PhraseListPrinter::Row> rows;
        for (int row = 0; row < 200; ++row) {
            rows.append({u"phrase %1"_s.arg(row), {}, QString(row % 50 == 0 ? 9'000 : 10, u'x')});
        }
        QPrinter printer;
        printer.setOutputFileName(m_tab->path(u"list.pdf"_s));
        PhraseListPrinter(u"list"_s, {u"Phrase"_s, u"Application"_s, u"Sound"_s}, u"Page %1 of %2"_s, rows)
            .print(printer);
        QFile file(m_tab->path(u"list.pdf"_s));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray pdf = file.readAll();
        QVERIFY(pdf.startsWith("%PDF"));
        const auto pages = pdf.count("/Type /Page\n");
        QVERIFY2(pages >= 8 && pages < 20, QByteArray::number(pages).constData());
    }

private:
    QStringList titles() const
    {
        QStringList titles;
        for (int item = 0; item < m_tab->popUp->count(); ++item) {
            titles.append(m_tab->popUp->itemText(item));
        }
        return titles;
    }

    /// Opens the pop-up and clicks an item.
    void choose(int item, Qt::KeyboardModifiers modifiers = {})
    {
        m_tab->popUp->showPopup();
        QAbstractItemView* view = m_tab->popUp->view();
        const QModelIndex index = view->model()->index(item, 0);
        view->setCurrentIndex(index);
        view->scrollTo(index);
        QTest::keyClick(view, Qt::Key_Enter, modifiers);
    }

    static ModalDriver::Act nameFile(const QString& path)
    {
        return [path](QWidget* modal) {
            auto* name = modal->findChild<QLineEdit*>(u"fileNameEdit"_s);
            QVERIFY(name);
            name->setText(path);
            QTest::keyClick(name, Qt::Key_Return);
        };
    }

    std::unique_ptr<PhrasesTabFixture> m_tab;
};

QTEST_MAIN(PhraseDocumentsTest)
#include "PhraseDocumentsTest.moc"
