// SPDX-License-Identifier: MIT
#include "DocumentFixture.h"

#include <core/BYGlobals.h>
#include <core/DocumentBackups.h>
#include <core/SharedNames.h>
#include <phrases/DocumentCommands.h>
#include <phrases/DocumentsPopUpButton.h>
#include <phrases/PrintClippingsWindow.h>

#include <QAbstractItemView>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QPrintPreviewWidget>
#include <QProcess>
#include <QProgressDialog>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <DataTable.h>
#include <Files.h>
#include <ModalDriver.h>
#include <NotificationRecorder.h>
#include <TypedStreamArchiver.h>
#include <sys/resource.h>

#include <csignal>

using namespace Qt::StringLiterals;

using PropertyList::Dictionary;
using PropertyList::Value;

class DocumentCommandsTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_document = std::make_unique<DocumentFixture>(QList<Value>{phraseEntry(u"a"_s, u""_s)});
        m_document->writePhrases({phraseEntry(u"other"_s, u""_s)}, u"other.blipsy"_s);
        BYGlobals::setDefaultFilePath(m_document->path(u"test.blipsy"_s));
        BYGlobals::fillArray();
        Settings::recentFiles.store(QStringList{m_document->path(u"gone.blipsy"_s), m_document->path(u"test.blipsy"_s),
            m_document->path(u"other.blipsy"_s)});
        m_popUp = std::make_unique<DocumentsPopUpButton>();
        m_commands = std::make_unique<DocumentCommands>(m_popUp.get());
        connect(m_popUp.get(), &QComboBox::activated, m_commands.get(), &DocumentCommands::carryOutChosenItem);
        connect(m_commands.get(), &DocumentCommands::chosen, &BYGlobals::fillArray);
        m_commands->updatePopUp();
        m_popUp->show();
        m_popUp->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_popUp.get()));
    }

    void cleanup()
    {
        m_commands.reset();
        m_popUp.reset();
    }

    void popUpListsTheNewestFirstAndForgetsWhatIsGone()
    {
        QCOMPARE(
            titles(), (QStringList{u"other"_s, u"test"_s, u""_s, u"Print…"_s, u"Open…"_s, u"New sounds document…"_s}));
        QCOMPARE(m_popUp->currentText(), u"test"_s);
        QCOMPARE(m_popUp->toolTip(), m_document->path(u"test.blipsy"_s));
        QCOMPARE(Settings::recentFiles.value()->size(), 2);
    }

    void chosenDocumentIsTheOneInUse()
    {
        NotificationRecorder recorder;
        QString left;
        const QObject watched;
        connect(
            m_commands.get(), &DocumentCommands::leaving, &watched, [&left] { left = BYGlobals::defaultFilePath(); });
        choose(0);
        QCOMPARE(left, m_document->path(u"test.blipsy"_s));
        QVERIFY(m_document->entryCalled(u"other"_s));
        QCOMPARE(BYGlobals::retrieveFromUserDefaults(Settings::defaultFilePath.key).string(),
            m_document->path(u"other.blipsy"_s));
        QCOMPARE(m_popUp->currentText(), u"other"_s);
        QTRY_VERIFY(recorder.names().contains(u"Preferences Changed"_s));
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
        const QSignalSpy printed(m_commands.get(), &DocumentCommands::printRequested);
        const auto press = [this](Qt::Key key) { QTest::keyClick(m_popUp->windowHandle(), key); };
        for (const Qt::Key key : keys.first(keys.size() - 1)) {
            press(key);
            QVERIFY(m_popUp->view()->isVisible());
            QCOMPARE(BYGlobals::defaultFilePath(), m_document->path(u"test.blipsy"_s));
            QVERIFY(printed.isEmpty());
        }
        press(keys.last());
        QVERIFY(!m_popUp->view()->isVisible());
        QCOMPARE(printed.size(), prints ? 1 : 0);
        QFETCH(const QString, document);
        QCOMPARE(BYGlobals::defaultFilePath(), m_document->path(document));
    }

    void wheelAndShortcutsLeaveTheClosedPopUpAlone()
    {
        const QSignalSpy printed(m_commands.get(), &DocumentCommands::printRequested);
        QTest::keyClick(m_popUp->windowHandle(), Qt::Key_P, Qt::AltModifier);
        const QPointF point = m_popUp->rect().center();
        QWheelEvent wheel(
            point, m_popUp->mapToGlobal(point), {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(m_popUp.get(), &wheel);
        QVERIFY(!m_popUp->view()->isVisible());
        QCOMPARE(m_popUp->currentText(), u"test"_s);
        QVERIFY(printed.isEmpty());
    }

    void commandForgetsAnyDocumentButTheOneInUse()
    {
        choose(1, Qt::ControlModifier);
        QCOMPARE(Settings::recentFiles.value()->size(), 2);
        choose(0, Qt::ControlModifier);
        QCOMPARE(Settings::recentFiles.value(), QStringList{m_document->path(u"test.blipsy"_s)});
        QVERIFY(m_document->entryCalled(u"a"_s));
        QVERIFY(QFile::exists(m_document->path(u"other.blipsy"_s)));
    }

    void newDocumentHasOnePhrase()
    {
        ModalDriver name(nameFile(m_document->path(u"mine.Blipsy"_s)));
        choose(m_popUp->count() - 1);
        QVERIFY(name.wasAnswered());
        QCOMPARE(BYGlobals::defaultFilePath(), m_document->path(u"mine.Blipsy.Blipsy"_s));
        QCOMPARE(phrasesIn(m_document->storedPhrases()), QStringList{u"newPhrase"_s});
        QCOMPARE(m_popUp->itemText(0), u"mine.Blipsy"_s);
    }

    void cancelledPanelsChangeNothing()
    {
        for (const int item : {m_popUp->count() - 1, m_popUp->count() - 2}) {
            ModalDriver cancel([](QWidget* modal) { QTest::keyClick(modal, Qt::Key_Escape); });
            choose(item);
            QVERIFY(cancel.wasAnswered());
            QCOMPARE(BYGlobals::defaultFilePath(), m_document->path(u"test.blipsy"_s));
            QCOMPARE(m_popUp->currentText(), u"test"_s);
        }
    }

    void importedFileBecomesTheDocument()
    {
        writeSource(u"entries"_s, Dictionary::create({{u"abbr"_s, u"brb"_s}}), 1);
        importAs(u"imported"_s);
        QCOMPARE(phrasesIn(m_document->storedPhrases()), QStringList{u"brb"_s});
        QCOMPARE(m_popUp->currentText(), u"imported"_s);
        QVERIFY(!BYGlobals::soundsPrefsArray());
    }

    void fileWithoutAListIsToldAndLeavesNoDocument()
    {
        writeSource(u"words"_s, 7, 1);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot import .*words.xml: .*no list"_s));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot read document .*imported"_s));
        importAs(u"imported"_s);
        QCOMPARE(BYGlobals::defaultFilePath(), m_document->path(u"imported.Blipsy"_s));
        QVERIFY(!QFile::exists(BYGlobals::defaultFilePath()));
        QVERIFY(!BYGlobals::clippingsArray());
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
        QCOMPARE(BYGlobals::defaultFilePath(), m_document->path(u"test.blipsy"_s));
        QCOMPARE(
            BYGlobals::retrieveFromUserDefaults(Settings::defaultFilePath.key).string(), BYGlobals::defaultFilePath());
        QCOMPARE(Settings::recentFiles.value()->size(), 2);
        QVERIFY(m_document->entryCalled(u"a"_s));
    }

    void fullDiskLeavesWhatIsThere()
    {
        writeSource(u"entries"_s, Dictionary::create({{u"exp"_s, QString(1'000, u'x')}}), 100);
        QVERIFY(QFile::copy(m_document->path(u"other.blipsy"_s), m_document->path(u"taken.Blipsy"_s)));
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
        QCOMPARE(phrasesIn(m_document->storedPhrases()), QStringList{u"other"_s});
        QVERIFY(m_document->entryCalled(u"other"_s));
    }

    void backupComesBackInThePlaceOfItsDocument_data()
    {
        const DataTable<QString, QString, QString> row("document", "answer", "phrase");
        row("in use", u"test.blipsy"_s, u"Go Back"_s, u"a"_s);
        row("not after all", u"test.blipsy"_s, u"Cancel"_s, u"changed"_s);
        row("used lately", u"other.blipsy"_s, u"Go Back"_s, u"other"_s);
        row("unknown", u"new.Blipsy"_s, {}, u"unknown"_s);
    }

    void backupComesBackInThePlaceOfItsDocument()
    {
        const auto [document, answer, phrase] = currentRow<QString, QString, QString>();
        m_document->writePhrases({phraseEntry(u"unknown"_s, u""_s)}, u"unknown.blipsy"_s);
        const QString source = answer.isEmpty() ? u"unknown.blipsy"_s : document;
        const auto backup = DocumentBackups::keep(m_document->path(source), 10'000);
        QVERIFY(backup);
        m_document->writePhrases({phraseEntry(u"changed"_s, u""_s)}, source);
        std::unique_ptr<ModalDriver> question;
        ModalDriver open([&, answer = answer, document = document](QWidget* modal) {
            question = std::make_unique<ModalDriver>(
                answer.isEmpty() ? nameFile(m_document->path(document).chopped(7)) : ModalDriver::click(answer));
            const auto places = qobject_cast<QFileDialog*>(modal)->sidebarUrls();
            QVERIFY(places.contains(QUrl::fromLocalFile(DocumentBackups::folder())));
            const ModalDriver::Act name = nameFile(*backup);
            name(modal);
        });
        choose(m_popUp->count() - 2);
        QVERIFY(question && question->wasAnswered());
        QCOMPARE(BYGlobals::defaultFilePath(), m_document->path(document));
        QVERIFY(m_document->entryCalled(phrase));
        QVERIFY(!QFileDialog().sidebarUrls().contains(QUrl::fromLocalFile(DocumentBackups::folder())));
        const QDir backups(DocumentBackups::folder());
        const QString newest = backups.entryList(QDir::Files, QDir::Time).constFirst();
        QCOMPARE(Files::contents(backups.filePath(newest)).contains("changed"), answer == u"Go Back");
    }

    void printedListIsTheOneOfThePreview()
    {
        QList<Value> phrases;
        for (int number = 0; number < 200; ++number) {
            phrases.append(phraseEntry(u"phrase %1 "_s.arg(number), QString(number % 50 == 0 ? 9'000 : 10, u'x'),
                number == 7 ? m_document->path(u"Fine Editor.app"_s) : QString()));
        }
        m_document->writePhrases(phrases, u"large.blipsy"_s);
        m_commands->use(m_document->path(u"large.blipsy"_s));
        PrintClippingsWindow window;
        window.present();
        const int pages = window.form().printClippingsTextView->pageCount();
        QVERIFY2(pages >= 8 && pages < 20, QByteArray::number(pages).constData());

        const QString file = m_document->path(u"list.pdf"_s);
        ModalDriver print([&file](QWidget* modal) {
            modal->findChild<QLineEdit*>(u"filename"_s)->setText(file);
            ModalDriver::click(u"Print"_s)(modal);
        });
        window.form().printClippingsPrintButton->click();
        QVERIFY(print.wasAnswered());
        QVERIFY(!window.isVisible());
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
        for (int item = 0; item < m_popUp->count(); ++item) {
            titles.append(m_popUp->itemText(item));
        }
        return titles;
    }

    /// Opens the pop-up and clicks an item.
    void choose(int item, Qt::KeyboardModifiers modifiers = {})
    {
        m_popUp->showPopup();
        QAbstractItemView* view = m_popUp->view();
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
        m_document->write(name, Dictionary::create({{list, items}}));
    }

    /// Opens @p source and imports it under the name @p name; @p then runs when that name has been typed.
    void importAs(
        const QString& name, const QString& source = u"words.xml"_s, const std::function<void()>& then = [] {})
    {
        std::unique_ptr<ModalDriver> saveAs;
        ModalDriver open([&](QWidget* modal) {
            saveAs = std::make_unique<ModalDriver>([&](QWidget* panel) {
                then();
                nameFile(m_document->path(name))(panel);
            });
            nameFile(m_document->path(source))(modal);
        });
        choose(m_popUp->count() - 2);
        QVERIFY(saveAs && saveAs->wasAnswered());
    }

    QStringList filesInFolder() const
    {
        return QDir(m_document->m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
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

    std::unique_ptr<DocumentFixture> m_document;
    std::unique_ptr<QComboBox> m_popUp;
    std::unique_ptr<DocumentCommands> m_commands;
};

QTEST_MAIN(DocumentCommandsTest)
#include "DocumentCommandsTest.moc"
