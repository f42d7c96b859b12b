// SPDX-License-Identifier: MIT
#include <core/BYGlobals.h>
#include <core/SharedNames.h>
#include <editpane/EditPane.h>
#include <platform/richtext/Rtfd.h>
#include <platform/storage/Preferences.h>
#include <platform/table/TableView.h>

#include <QClipboard>
#include <QComboBox>
#include <QListView>
#include <QMenu>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QToolButton>
#include <QToolTip>

#include <ModalDriver.h>
#include <NotificationRecorder.h>

#include <tuple>

using namespace Qt::StringLiterals;
using PropertyList::Array;
using PropertyList::Dictionary;
using PropertyList::Value;

namespace {

class TwoRows final : public TableModel
{
public:
    TwoRows()
        : TableModel({{.identifier = u"Phrase"_s, .title = {}}}, nullptr)
    {
    }

    int countRows() const override { return 3; }

protected:
    QVariant objectValue(const QString&, int row) const override { return row; }

    QString toolTip(const QString&, int) const override { return {}; }

    QString accessibleText(const QString&, int) const override { return {}; }
};

} // namespace

class EditPaneTest final : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    TwoRows m_rows;
    std::unique_ptr<TableView> m_table;
    std::unique_ptr<EditPane> m_editPane;

    const Ui::EditPane& form() { return m_editPane->form(); }

    BYEditPaneController& controller() { return m_editPane->controller(); }

    TextView& text() { return *form().editEntryPane; }

    Value stored(int row, const QString& key)
    {
        Changes::finish();
        QFile file(BYGlobals::defaultFilePath());
        if (!file.open(QIODevice::ReadOnly)) {
            return {};
        }
        const Value root = *PropertyList::read(file.readAll());
        return root.dictionary()->value(DocumentKey::clippings).array()->at(row).dictionary()->value(key);
    }

private Q_SLOTS:

    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        const auto phrases = Array::create();
        phrases->append(Dictionary::create({{PhraseKey::phrase, u"one"_s}, {PhraseKey::plainText, u"at [[3]]"_s}}));
        phrases->append(Dictionary::create({{PhraseKey::plainText, u"nameless"_s}}));
        phrases->append(Dictionary::create({{PhraseKey::phrase, u"R&D"_s}, {PhraseKey::rtfd, QByteArray("old")}}));
        QFile file(m_folder->filePath(u"test.blipsy"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(PropertyList::write(Dictionary::create({{DocumentKey::clippings, phrases}})));
        file.close();
        BYGlobals::setDefaultFilePath(file.fileName());
        BYGlobals::fillArray();
        BYGlobals::setEditEntryPaneTextIsDirty(false);

        m_table = std::make_unique<TableView>();
        m_table->setModel(&m_rows);
        m_editPane = std::make_unique<EditPane>();
        controller().abbsTableView = m_table.get();
        controller().awakeFromNib();
        m_editPane->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_editPane.get()));
    }

    void cleanup()
    {
        m_editPane.reset();
        m_table.reset();
    }

    void menusShowTodayInEveryFormat()
    {
        const QMenu* const menu = form().dateTimePopUpButton->menu()->actions().constFirst()->menu();
        QCOMPARE(menu, controller().dateFormats);
        const QList<QAction*> dates = menu->actions().at(0)->menu()->actions();
        const QList<QAction*> times = menu->actions().at(1)->menu()->actions();
        QVERIFY(dates.size() >= 22 && times.size() >= 15);
        for (const QAction* item : dates + times) {
            QVERIFY(item->data().toInt() <= 999);
            QVERIFY(!item->text().isEmpty() && !item->text().contains(u'%'));
        }
        QVERIFY(menu->actions().at(5)->menu() != nullptr);
    }

    void itemsInsertByTheirTag_data()
    {
        QTest::addColumn<int>("tag");
        QTest::addColumn<QString>("inserted");

        QTest::newRow("format") << 999 << u"tool tip"_s;
        for (int index = 0; const char* const marker : {"%|", "%<", "%^", "%>", "%v", "%+", "%-"}) {
            QTest::newRow(marker) << 1000 + index++ << QString::fromLatin1(marker);
        }
        QTest::newRow("first symbol") << 1007 << u"t"_s;
        QTest::newRow("last symbol") << 1010 << u"t"_s;
        QTest::newRow("unknown") << 1011 << QString();
    }

    void itemsInsertByTheirTag()
    {
        QFETCH(int, tag);
        QFETCH(QString, inserted);

        text().setString(u"ab"_s);
        text().selectAll();
        const QSignalSpy changes(&text(), &TextView::textDidChange);
        QAction item(u"title"_s);
        item.setData(tag);
        item.setToolTip(u"tool tip"_s);
        controller().enterDateTimeSyntax(&item);
        QCOMPARE(text().string(), inserted.isEmpty() ? u"ab"_s : inserted);
        QCOMPARE(changes.isEmpty(), inserted.isEmpty());
    }

    void phrasesAreThoseOfTheSetUp()
    {
        BYGlobals::clippingsArray()->append(Dictionary::create({{PhraseKey::phrase, u"later"_s}}));
        QMenu* const menu = controller().dateFormats->actions().at(5)->menu();
        for (int shown = 0; shown < 2; ++shown) {
            menu->popup({});
            menu->close();
        }
        const QList<QAction*> items = menu->actions();
        QCOMPARE(items.size(), 2);
        QVERIFY(items[0]->toolTip().startsWith(u"at ") && !items[0]->toolTip().contains(u'['));
        QCOMPARE(items[1]->text(), u"R&&D"_s);
        const auto shownToolTip = [menu](QAction* item) {
            QHelpEvent hover(QEvent::ToolTip, menu->actionGeometry(item).center(), {});
            QApplication::sendEvent(menu, &hover);
            return QToolTip::text();
        };
        QCOMPARE(shownToolTip(items[1]), QString());
        QVERIFY(shownToolTip(items[0]).contains(u"at "));
        text().setString(u"x"_s);
        text().selectAll();
        items[1]->trigger();
        QCOMPARE(text().string(), u"\u270DR&D\u270D"_s);
    }

    void manyPhrasesAreOneList()
    {
        for (int number = 0; number < 2'000; ++number) {
            BYGlobals::clippingsArray()->append(
                Dictionary::create({{PhraseKey::phrase, QString::number(number)}, {PhraseKey::plainText, u"<b>%%"_s}}));
        }
        controller().dateFormats = nullptr;
        controller().awakeFromNib();
        QMenu* const menu = controller().dateFormats->actions().at(5)->menu();
        menu->popup({});
        auto* const list = menu->findChild<QListView*>();
        QVERIFY(list != nullptr && list->isVisible());
        // The two named phrases of the document come first.
        const QModelIndex last = list->model()->index(2'001, 0);
        QCOMPARE(last.data().toString(), u"1999"_s);
        QVERIFY(last.data(Qt::ToolTipRole).toString().contains(u"&lt;b&gt;%<"));
        text().setString(u"a"_s);
        text().selectAll();
        list->setCurrentIndex(last);
        QTest::keyClick(menu->focusWidget(), Qt::Key_Return);
        QCOMPARE(text().string(), u"\u270D1999\u270D"_s);
        QVERIFY(!menu->isVisible());
    }

    void savingPlainTextStoresItAndDropsRichText()
    {
        NotificationRecorder heard;
        m_table->selectRow_byExtendingSelection(2, false);
        text().setString(u"new\ntext"_s);
        form().saveEditedAbbButton->setEnabled(true);
        BYGlobals::setEditEntryPaneTextIsDirty(true);
        form().saveEditedAbbButton->click();
        QCOMPARE(stored(2, PhraseKey::plainText).string(), u"new\ntext"_s);
        QVERIFY(stored(2, PhraseKey::rtfd).isNull());
        QVERIFY(!BYGlobals::editEntryPaneTextIsDirty() && !form().saveEditedAbbButton->isEnabled());
        QTRY_COMPARE(heard.names(), QStringList(NotificationName::preferencesChanged));
    }

    void savingRichTextStoresBoth()
    {
        m_table->selectRow_byExtendingSelection(0, false);
        text().setString(u"styled"_s);
        form().richText->click();
        QTextCursor selected(text().document());
        selected.setPosition(1);
        selected.setPosition(3, QTextCursor::KeepAnchor);
        text().setTextCursor(selected);
        form().saveEditedAbbButton->click();
        QCOMPARE(text().textCursor(), selected);
        QCOMPARE(stored(0, PhraseKey::plainText).string(), u"styled"_s);
        text().setString({});
        QVERIFY(text().replaceAllWithRTFD(stored(0, PhraseKey::rtfd).data()));
        QCOMPARE(text().string(), u"styled"_s);
    }

    void richTextStartsInTheFontOfMail()
    {
        const QString mail = u"com.apple.mail"_s;
        Preferences::setValue(u"NSFont"_s, u"Helvetica-BoldOblique"_s, mail);
        Preferences::setValue(u"NSFontSize"_s, u"17.5"_s, mail);
        text().setString(u"some text"_s);
        form().richText->click();
        const QTextCharFormat format = text().document()->begin().begin().fragment().charFormat();
        QCOMPARE(format.fontFamilies().toStringList(), QStringList(u"Helvetica"_s));
        QVERIFY(format.fontWeight() == QFont::Bold && format.fontItalic());
        QCOMPARE(format.fontPointSize(), 17.0);
        QCOMPARE(form().formattingBar->findChild<QComboBox*>(u"fontSize"_s)->currentText(), u"17"_s);
        QVERIFY(text().isRichText() && text().importsGraphics() && form().textFormattingPopUpButton->isEnabled());
        QVERIFY(BYGlobals::editEntryPaneTextIsDirty() && !text().textCursor().hasSelection());
    }

    void makePlainDropsPicturesAndStoresNothing()
    {
        form().richText->click();
        text().setString(u"ab"_s);
        QImage picture(6, 4, QImage::Format_RGB32);
        picture.fill(Qt::blue);
        QApplication::clipboard()->setImage(picture);
        text().paste();
        QCOMPARE(text().string(), u"\uFFFCab"_s);
        ModalDriver driver(ModalDriver::click(u"Make Plain"_s));
        form().plainText->click();
        QTRY_VERIFY(!text().isRichText());
        QVERIFY(driver.wasAnswered());
        QCOMPARE(text().string(), u"ab"_s);
        QVERIFY(BYGlobals::editEntryPaneTextIsDirty() && form().saveEditedAbbButton->isEnabled());
        QVERIFY(!form().textFormattingPopUpButton->isEnabled() && !form().formattingBar->isVisible());
        QCOMPARE(stored(0, PhraseKey::plainText).string(), u"at [[3]]"_s);
    }

    void keepRichLeavesTheTextAndTellsThePane()
    {
        NotificationRecorder heard;
        form().richText->click();
        text().setString(u"ab"_s);
        ModalDriver driver(ModalDriver::click(u"Keep Rich"_s));
        form().plainText->click();
        QTRY_COMPARE(heard.names(), QStringList(NotificationName::keepRich));
        QVERIFY(text().isRichText());
        QCOMPARE(text().string(), u"ab"_s);
    }

    void answerForAnotherTextChangesNothing()
    {
        form().richText->click();
        text().setString(u"asked about"_s);
        ModalDriver driver([this](QWidget* sheet) {
            std::ignore = text().replaceAllWithRTFD("{\\rtf1 \\b another}");
            BYGlobals::setEditEntryPaneTextIsDirty(false);
            ModalDriver::click(u"Make Plain"_s)(sheet);
        });
        form().plainText->click();
        QTRY_VERIFY(driver.wasAnswered());
        QVERIFY(text().isRichText() && !BYGlobals::editEntryPaneTextIsDirty());
    }

    void onlyTheUsersChangesAreSent()
    {
        const QSignalSpy changes(&text(), &TextView::textDidChange);
        const QSignalSpy attributes(&text(), &TextView::typingAttributesDidChange);
        text().setString(u"one"_s);
        text().setRichText(true);
        text().setFontOfAll(QFont(u"DejaVu Sans"_s, 20));
        std::ignore = text().replaceAllWithRTFD("{\\rtf1 two}");
        text().resetAttributes();
        QCOMPARE(changes.size() + attributes.size(), 0);
        QTest::keyClicks(&text(), u"x"_s);
        QCOMPARE(changes.size(), 1);
        QCOMPARE(attributes.size(), 0);
        form().formattingBar->findChild<QToolButton*>(u"bold"_s)->click();
        QCOMPARE(attributes.size(), 1);
    }

    void barFollowsTheCursorAndChangesTheText()
    {
        form().richText->click();
        QVERIFY(form().formattingBar->isVisible());
        std::ignore = text().replaceAllWithRTFD("{\\rtf1{\\fonttbl\\f0 DejaVu Sans;}\\qc\\f0\\fs30 a\\b b}");
        const auto* const bold = form().formattingBar->findChild<QToolButton*>(u"bold"_s);
        QVERIFY(!bold->isChecked());
        QVERIFY(form().formattingBar->findChild<QToolButton*>(u"alignCenter"_s)->isChecked());
        QCOMPARE(form().formattingBar->findChild<QComboBox*>(u"fontSize"_s)->currentText(), u"15"_s);
        text().moveCursor(QTextCursor::End);
        QVERIFY(bold->isChecked());
        text().selectAll();
        text().setFocus();
        QTest::keyClick(&text(), Qt::Key_I, Qt::ControlModifier);
        QVERIFY(text().document()->begin().begin().fragment().charFormat().fontItalic());
    }

    void barTellsTheSideOfHebrew()
    {
        form().richText->click();
        std::ignore = text().replaceAllWithRTFD("{\\rtf1\\uc0\\u1513 \\u1500 }");
        auto* const left = form().formattingBar->findChild<QToolButton*>(u"alignLeft"_s);
        QVERIFY(form().formattingBar->findChild<QToolButton*>(u"alignRight"_s)->isChecked());
        left->click();
        QVERIFY(text().RTFDFromAll().contains("\\ql "));
        text().moveCursor(QTextCursor::End);
        QVERIFY(left->isChecked());
    }
};

QTEST_MAIN(EditPaneTest)
#include "EditPaneTest.moc"
