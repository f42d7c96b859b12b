// SPDX-License-Identifier: MIT
#include "PhrasesTabFixture.h"

#include <core/BYGlobals.h>
#include <core/SharedNames.h>
#include <phrases/PrintClippingsWindow.h>

#include <QAbstractItemView>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPrintPreviewWidget>
#include <QProcess>
#include <QProgressDialog>
#include <QRegularExpression>
#include <QTest>

#include <ModalDriver.h>
#include <TypedStreamArchiver.h>
#include <sys/resource.h>

#include <csignal>

using namespace Qt::StringLiterals;

using PropertyList::Dictionary;
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
        Settings::recentFiles.store(
            QStringList{m_tab->path(u"gone.blipsy"_s), m_tab->path(u"test.blipsy"_s), m_tab->path(u"other.blipsy"_s)});
        m_tab->table->updateClippingsPopUpButton();
    }

    void cleanup() { m_tab.reset(); }

    void popUpListsTheNewestFirstAndForgetsWhatIsGone()
    {
        QCOMPARE(
            titles(), (QStringList{u"other"_s, u"test"_s, u""_s, u"Print…"_s, u"Open…"_s, u"New sounds document…"_s}));
        QCOMPARE(m_tab->popUp->currentText(), u"test"_s);
        QCOMPARE(m_tab->popUp->toolTip(), m_tab->path(u"test.blipsy"_s));
        QCOMPARE(Settings::recentFiles.value()->size(), 2);
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

    void keysOpenThePopUpAndChooseInIt_data()
    {
        QTest::addColumn<QList<Qt::Key>>("keys");
        QTest::addColumn<QString>("document");
        QTest::addColumn<bool>("prints");
        using Keys = QList<Qt::Key>;
        QTest::newRow("a step") << Keys{Qt::Key_Up, Qt::Key_Up, Qt::Key_Return} << u"other.blipsy"_s << false;
        QTest::newRow("to the end and out")
            << Keys{Qt::Key_End, Qt::Key_Down, Qt::Key_Escape} << u"test.blipsy"_s << false;
        QTest::newRow("a page") << Keys{Qt::Key_PageDown, Qt::Key_Down, Qt::Key_Enter} << u"test.blipsy"_s << true;
        QTest::newRow("letters") << Keys{Qt::Key_O, Qt::Key_T, Qt::Key_Return} << u"other.blipsy"_s << false;
        QTest::newRow("a command's letter") << Keys{Qt::Key_P, Qt::Key_Return} << u"test.blipsy"_s << true;
        QTest::newRow("space") << Keys{Qt::Key_Space, Qt::Key_Up, Qt::Key_Return} << u"other.blipsy"_s << false;
    }

    void keysOpenThePopUpAndChooseInIt()
    {
        QFETCH(const QList<Qt::Key>, keys);
        QFETCH(const bool, prints);
        m_tab->popUp->setFocus();
        const auto press = [this](Qt::Key key) { QTest::keyClick(m_tab->window->windowHandle(), key); };
        for (const Qt::Key key : keys.first(keys.size() - 1)) {
            press(key);
            QVERIFY(m_tab->popUp->view()->isVisible());
            QCOMPARE(BYGlobals::defaultFilePath(), m_tab->path(u"test.blipsy"_s));
            QVERIFY(!m_tab->table->printClippingsWindow->isVisible());
        }
        press(keys.last());
        QVERIFY(!m_tab->popUp->view()->isVisible());
        QCOMPARE(m_tab->table->printClippingsWindow->isVisible(), prints);
        QFETCH(const QString, document);
        QCOMPARE(BYGlobals::defaultFilePath(), m_tab->path(document));
    }

    void wheelAndShortcutsLeaveTheClosedPopUpAlone()
    {
        m_tab->popUp->setFocus();
        QTest::keyClick(m_tab->window->windowHandle(), Qt::Key_P, Qt::AltModifier);
        const QPointF point = m_tab->popUp->rect().center();
        QWheelEvent wheel(point, m_tab->popUp->mapToGlobal(point), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
            Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(m_tab->popUp, &wheel);
        QVERIFY(!m_tab->popUp->view()->isVisible());
        QCOMPARE(m_tab->popUp->currentText(), u"test"_s);
        QVERIFY(!m_tab->table->printClippingsWindow->isVisible());
    }

    void commandForgetsAnyDocumentButTheOneInUse()
    {
        choose(1, Qt::ControlModifier);
        QCOMPARE(Settings::recentFiles.value()->size(), 2);
        choose(0, Qt::ControlModifier);
        QCOMPARE(Settings::recentFiles.value(), QStringList{m_tab->path(u"test.blipsy"_s)});
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
        writeSource(u"entries"_s, Dictionary::create({{u"abbr"_s, u"brb"_s}}), 1);
        importAs(u"imported"_s);
        QCOMPARE(phrasesIn(m_tab->storedPhrases()), QStringList{u"brb"_s});
        QCOMPARE(m_tab->popUp->currentText(), u"imported"_s);
        QVERIFY(!BYGlobals::soundsPrefsArray());
    }

    void fileWithoutAListIsToldAndLeavesNoDocument()
    {
        writeSource(u"words"_s, 7, 1);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot import .*words.xml: .*no list"_s));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot read document .*imported"_s));
        importAs(u"imported"_s);
        QCOMPARE(BYGlobals::defaultFilePath(), m_tab->path(u"imported.Blipsy"_s));
        QVERIFY(!QFile::exists(BYGlobals::defaultFilePath()));
        QCOMPARE(m_tab->table->numberOfRows(), 0);
    }

    void cancelledImportChangesNothing()
    {
        const Archiver archiver;
        const QByteArray text = archiver.attributedString("text",
            archiver.run(1, 4) + archiver.group("@", archiver.dictionary({{"NSUnderline", archiver.number(1)}})));
        writeSource(u"Snippets"_s, Dictionary::create({{u"Formatted Text"_s, text}}), 50'000, u"words.textexpander"_s);
        const QStringList before = filesInFolder();
        std::unique_ptr<ModalDriver> cancel;
        int done = 0;
        importAs(u"imported"_s, u"words.textexpander"_s, [&] {
            cancel = std::make_unique<ModalDriver>([&done](QWidget* modal) {
                auto* progress = qobject_cast<QProgressDialog*>(modal);
                QVERIFY(progress);
                QCOMPARE(progress->maximum(), 50'000);
                done = progress->value();
                ModalDriver::click(u"Cancel"_s)(progress);
            });
        });

        QVERIFY(cancel && cancel->wasAnswered());
        QVERIFY(done > 0 && done < 50'000);
        QCOMPARE(filesInFolder(), before);
        QCOMPARE(BYGlobals::defaultFilePath(), m_tab->path(u"test.blipsy"_s));
        QCOMPARE(
            BYGlobals::retrieveFromUserDefaults(SettingKey::defaultFilePath).string(), BYGlobals::defaultFilePath());
        QCOMPARE(Settings::recentFiles.value()->size(), 2);
        QVERIFY(m_tab->entryCalled(u"a"_s));
    }

    void fullDiskLeavesWhatIsThere()
    {
        writeSource(u"entries"_s, Dictionary::create({{u"exp"_s, QString(1'000, u'x')}}), 100);
        QVERIFY(QFile::copy(m_tab->path(u"other.blipsy"_s), m_tab->path(u"taken.Blipsy"_s)));
        const QStringList before = filesInFolder();
        rlimit limit{};
        getrlimit(RLIMIT_FSIZE, &limit);
        const rlimit tight{.rlim_cur = 50'000, .rlim_max = limit.rlim_max};
        std::signal(SIGXFSZ, SIG_IGN);
        std::unique_ptr<ModalDriver> replace;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"taken.Blipsy"_s));
        importAs(u"taken"_s, u"words.xml"_s, [&] {
            replace = std::make_unique<ModalDriver>(ModalDriver::click(u"Replace"_s));
            setrlimit(RLIMIT_FSIZE, &tight);
        });
        setrlimit(RLIMIT_FSIZE, &limit);
        QVERIFY(replace && replace->wasAnswered());
        QCOMPARE(filesInFolder(), before);
        QCOMPARE(phrasesIn(m_tab->storedPhrases()), QStringList{u"other"_s});
        QVERIFY(m_tab->entryCalled(u"other"_s));
    }

    void printedListIsTheOneOfThePreview()
    {
        const PropertyList::ArrayPointer phrases = PropertyList::Array::create();
        for (int number = 0; number < 200; ++number) {
            phrases->append(phraseEntry(u"phrase %1 "_s.arg(number), QString(number % 50 == 0 ? 9'000 : 10, u'x'),
                number == 7 ? m_tab->path(u"Fine Editor.app"_s) : QString()));
        }
        m_tab->write(u"large.blipsy"_s, Dictionary::create({{DocumentKey::clippings, phrases}}));
        m_tab->table->useDocument(m_tab->path(u"large.blipsy"_s));
        m_tab->table->showPrintClippingsWindow(nullptr);
        const int pages = m_tab->table->printClippingsTextView->pageCount();
        QVERIFY2(pages >= 8 && pages < 20, QByteArray::number(pages).constData());

        const QString file = m_tab->path(u"list.pdf"_s);
        ModalDriver print([&file](QWidget* modal) {
            modal->findChild<QLineEdit*>(u"filename"_s)->setText(file);
            ModalDriver::click(u"Print"_s)(modal);
        });
        m_tab->table->printClippingsPrintButton->click();
        QVERIFY(print.wasAnswered());
        QVERIFY(!m_tab->table->printClippingsWindow->isVisible());
        QProcess reader;
        reader.start(u"pdftotext"_s, {u"-layout"_s, file, u"-"_s});
        QVERIFY(reader.waitForFinished());
        QStringList texts = QString::fromUtf8(reader.readAllStandardOutput()).split(u'\f', Qt::SkipEmptyParts);
        QCOMPARE(texts.size(), pages);
        for (int page = 0; page < pages; ++page) {
            const QStringList lines = texts.at(page).simplified().split(u' ');
            QCOMPARE(lines.first(4), (QStringList{u"large"_s, u"Phrase"_s, u"Application"_s, u"Sound"_s}));
            QCOMPARE(lines.last(4).join(u' '), u"Page %1 of %2"_s.arg(page + 1).arg(pages));
        }
        const QString all = texts.join(u' ').simplified();
        for (int number = 0; number < 200; ++number) {
            QCOMPARE(all.count(u"phrase %1 "_s.arg(number)), 1);
        }
        QVERIFY(all.contains(u"phrase 7 Fine Editor.app xxxxxxxxxx"_s));
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

    /// Writes a file of another tool with @p count items.
    void writeSource(const QString& list, const Value& item, int count, const QString& name = u"words.xml"_s) const
    {
        const PropertyList::ArrayPointer items = PropertyList::Array::create();
        for (int i = 0; i < count; ++i) {
            items->append(item);
        }
        m_tab->write(name, Dictionary::create({{list, items}}));
    }

    /// Opens @p source and imports it under the name @p name; @p then runs when that name has been typed.
    void importAs(
        const QString& name, const QString& source = u"words.xml"_s, const std::function<void()>& then = [] {})
    {
        std::unique_ptr<ModalDriver> saveAs;
        ModalDriver open([&](QWidget* modal) {
            saveAs = std::make_unique<ModalDriver>([&](QWidget* panel) {
                then();
                nameFile(m_tab->path(name))(panel);
            });
            nameFile(m_tab->path(source))(modal);
        });
        choose(m_tab->popUp->count() - 2);
        QVERIFY(saveAs && saveAs->wasAnswered());
    }

    QStringList filesInFolder() const
    {
        return QDir(m_tab->m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
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
