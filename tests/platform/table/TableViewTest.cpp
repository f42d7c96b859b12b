// SPDX-License-Identifier: MIT
#include "RowSource.h"

#include <platform/keyboard/KeyCharacters.h>
#include <platform/table/TableView.h>

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QShortcut>
#include <QTest>
#include <QTimer>

#include <DataTable.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int textColumn = 0;
constexpr int buttonColumn = 1;
constexpr int menuColumn = 2;

/// A table that tells the data source's journal what it is asked itself.
class RecordingTable final : public TableView
{
public:
    bool textShouldBeginEditing(QWidget* fieldEditor) override
    {
        source->journal.append(u"should begin"_s);
        return mayBegin && TableView::textShouldBeginEditing(fieldEditor);
    }

    void textDidEndEditing(QWidget* fieldEditor) override
    {
        source->journal.append(u"did end"_s);
        TableView::textDidEndEditing(fieldEditor);
    }

    bool performKeyEquivalent(QKeyEvent* event) override
    {
        const bool isHandled = keyCharacters(*event) == "c"_L1;
        source->journal.append(isHandled ? QStringList{u"key c"_s} : QStringList());
        return isHandled;
    }

    RowSource* source = nullptr;
    bool mayBegin = true;
};

} // namespace

class TableViewTest : public QObject
{
    Q_OBJECT

    using Road = std::function<void(TableViewTest&)>;

private Q_SLOTS:

    void init()
    {
        using Kind = TableModel::Kind;
        m_source = std::make_unique<RowSource>(std::vector<TableModel::Column>{
            {.identifier = u"Text"_s, .title = u"Words"_s, .kind = Kind::EditableText, .width = 200, .sorts = true},
            {.identifier = u"Button"_s, .title = u"Press"_s, .kind = Kind::Button, .keyEquivalent = u"a"_s},
            {.identifier = u"Menu"_s, .title = u"Choose"_s, .kind = Kind::Menu, .menu = &m_menu},
        });
        m_source->texts = {u"a"_s, u"b"_s, u"c"_s};
        m_table = std::make_unique<RecordingTable>();
        m_table->source = m_source.get();
        m_table->setModel(m_source.get());
        new QAbstractItemModelTester(
            m_source.get(), QAbstractItemModelTester::FailureReportingMode::QtTest, m_source.get());
        m_table->resize(500, 300);
        m_table->show();
        m_table->activateWindow();
        m_table->setFocus();
        QVERIFY(QTest::qWaitForWindowActive(m_table.get()));
    }

    void cleanup()
    {
        QVERIFY(!m_source->isAskedBeyondEnd);
        m_table.reset();
    }

    void announcesEachMoveBeforeAndAfter_data()
    {
        const DataTable<int, Road> row("row", "road");
        row("mouse", 2, [](TableViewTest& t) { t.click(2, textColumn); });
        row("press below the rows", -1,
            [](TableViewTest& t) { QTest::mouseClick(t.m_table->viewport(), Qt::LeftButton, {}, QPoint(20, 250)); });
        row("command click", -1, [](TableViewTest& t) { t.click(1, textColumn, Qt::ControlModifier); });
        row("keyboard", 0, [](TableViewTest& t) { QTest::keyClick(t.m_table.get(), Qt::Key_Up); });
        row("code", 2, [](TableViewTest& t) { t.m_table->selectRow_byExtendingSelection(2, true); });
        row("code, none", -1, [](TableViewTest& t) { t.m_table->selectRow_byExtendingSelection(-1, false); });
        row("the view's own selection", -1, [](TableViewTest& t) { t.m_table->clearSelection(); });
        row("removal of rows", -1, [](TableViewTest& t) {
            t.m_source->texts = {u"a"_s};
            t.m_table->noteNumberOfRowsChanged();
        });
    }

    void announcesEachMoveBeforeAndAfter()
    {
        const auto [row, road] = currentRow<int, Road>();
        m_table->selectRow_byExtendingSelection(1, false);
        observe();
        road(*this);
        QCOMPARE(journal(), QStringList({u"from 1"_s, u"to %1"_s.arg(row)}));
        QCOMPARE(m_table->selectedRow(), row);
        QCOMPARE(m_table->selectionModel()->hasSelection(), row >= 0);
        QCOMPARE(m_table->currentIndex().row(), row);
    }

    void movesOnceWhenAnObserverMovesToo()
    {
        connect(m_table.get(), &TableView::selectionIsChanging, this,
            [this] { m_table->selectRow_byExtendingSelection(0, false); });
        observe();
        m_table->selectRow_byExtendingSelection(2, false);
        QCOMPARE(journal(), QStringList({u"from -1"_s, u"to 2"_s}));
    }

    void dialogInsideAPressLeavesNoDragAndMovesAfterwards()
    {
        connect(m_table.get(), &TableView::selectionIsChanging, this, [] {
            QMessageBox box;
            QTimer::singleShot(0, &box, &QDialog::accept);
            box.exec();
        });
        QTest::mousePress(m_table->viewport(), Qt::LeftButton, {}, centerOf(1, buttonColumn));
        // The release went to the dialog. What comes next must neither drag nor select nor act.
        QCOMPARE(m_table->selectedRow(), 1);
        QTest::mouseMove(m_table->viewport(), centerOf(2, textColumn));
        QTest::mouseRelease(m_table->viewport(), Qt::LeftButton, {}, centerOf(1, buttonColumn));
        QCOMPARE(m_table->selectedRow(), 1);
        QCOMPARE(journal(), QStringList());
        QCOMPARE(m_table->selectionModel()->selectedRows().size(), 1);

        // The next click works as ever.
        click(1, buttonColumn);
        QCOMPARE(journal(), QStringList{u"set Button 1 "_s});
    }

    void dialogThatRemovesTheTargetKeepsTheOldRow()
    {
        m_table->selectRow_byExtendingSelection(0, false);
        connect(m_table.get(), &TableView::selectionIsChanging, this, [this] {
            m_source->texts = {u"a"_s};
            m_table->reloadData();
        });
        observe();
        click(2, textColumn);
        QCOMPARE(m_table->selectedRow(), 0);
        QCOMPARE(m_table->selectionModel()->selectedRows().value(0).row(), 0);
        QCOMPARE(journal(), QStringList({u"from 0"_s}));
    }

    void removalOfTheSelectedLastRowDeselects()
    {
        m_table->selectRow_byExtendingSelection(2, false);
        m_source->texts.removeLast();
        observe();
        m_table->reloadData();
        QCOMPARE(journal(), QStringList({u"from 2"_s, u"to -1"_s}));
        QVERIFY(!m_table->currentIndex().isValid());
    }

    void reloadKeepsSelectionAndResetsNothing()
    {
        m_table->selectRow_byExtendingSelection(1, false);
        bool isReset = false;
        connect(m_table->model(), &QAbstractItemModel::modelReset, this, [&isReset] { isReset = true; });
        observe();
        m_source->texts.append(u"d"_s);
        m_table->reloadData();
        QCOMPARE(m_table->numberOfRows(), 4);
        QCOMPARE(m_table->selectedRow(), 1);
        QVERIFY(!isReset && journal().isEmpty());
    }

    void clickSelectsAndThenSetsTheValue()
    {
        observe();
        click(2, buttonColumn);
        QCOMPARE(journal(), QStringList({u"from -1"_s, u"to 2"_s, u"set Button 2 "_s}));
    }

    void clickReleasedElsewhereDoesNothing()
    {
        QTest::mousePress(m_table->viewport(), Qt::LeftButton, {}, centerOf(0, buttonColumn));
        QTest::mouseRelease(m_table->viewport(), Qt::LeftButton, {}, centerOf(1, buttonColumn));
        QCOMPARE(journal(), QStringList());
    }

    void keysActivateTheCurrentButtonCell()
    {
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Down, Qt::Key_Return}) {
            QTest::keyClick(m_table.get(), key);
        }
        const QStringList activated{u"set Button 1 "_s};
        QCOMPARE(journal(), activated);
        QTest::keyClick(m_table.get(), Qt::Key_Space);
        QCOMPARE(journal(), activated + activated);
    }

    void keyboardStartsBesideTheButtons()
    {
        RowSource source({{.identifier = u"Button"_s, .title = {}, .kind = TableModel::Kind::Button},
            {.identifier = u"Text"_s, .title = {}}});
        source.texts = {u"a"_s, u"b"_s, u"c"_s};
        m_table->setModel(&source);
        QTest::keyClick(m_table.get(), Qt::Key_Down);
        QCOMPARE(m_table->currentIndex(), m_table->model()->index(0, 1));
        m_table->selectRow(2);
        QCOMPARE(m_table->currentIndex(), m_table->model()->index(2, 1));
    }

    void pressOpensTheMenuOfAPopUpCell()
    {
        m_menu.addAction(u"One"_s);
        QTest::mousePress(m_table->viewport(), Qt::LeftButton, {}, centerOf(1, menuColumn));
        QVERIFY(m_menu.isVisible());
        m_menu.close();
        QCOMPARE(m_table->selectedRow(), 1);
    }

    void editingFollowsTheOrder_data()
    {
        const DataTable<QString, int, QStringList> row("typed", "endKey", "expected");

        const QStringList committed{u"should begin"_s, u"did end"_s, u"set Text 1 xy"_s};
        row("Return", u"xy"_s, Qt::Key_Return, committed);
        row("Tab", u"xy"_s, Qt::Key_Tab, committed);
        row("click elsewhere", u"xy"_s, 0, committed);
        row("Escape", u"xy"_s, Qt::Key_Escape, {u"should begin"_s, u"did end"_s});
        row("no change", {}, Qt::Key_Return, {});
    }

    void editingFollowsTheOrder()
    {
        const auto [typed, endKey, expected] = currentRow<QString, int, QStringList>();
        m_table->editColumn_row_withEvent_select(textColumn, 1, nullptr, true);
        QVERIFY(m_table->isEditing());
        QVERIFY2(journal().isEmpty(), "opening the field is no change");
        auto* const editor = m_table->findChild<QLineEdit*>();
        QTest::keyClicks(editor, typed);
        if (endKey != 0) {
            QTest::keyClick(editor, Qt::Key(endKey));
        } else {
            m_table->setFocus(Qt::MouseFocusReason);
        }
        QCOMPARE(journal(), expected);
        QVERIFY(!m_table->isEditing());
    }

    void refusedChangeRestoresTheText()
    {
        m_table->mayBegin = false;
        m_table->editColumn_row_withEvent_select(textColumn, 1, nullptr, true);
        auto* const editor = m_table->findChild<QLineEdit*>();
        QTest::keyClicks(editor, u"x"_s);
        QCOMPARE(editor->text(), u"b"_s);
        QTest::keyClick(editor, Qt::Key_Return);
        QCOMPARE(journal(), QStringList({u"should begin"_s}));
    }

    void reloadGivesUpTheEditingOfAChangedCell()
    {
        m_table->editColumn_row_withEvent_select(textColumn, 1, nullptr, true);
        QTest::keyClicks(m_table->findChild<QLineEdit*>(), u"x"_s);
        m_table->reloadData();
        QVERIFY(m_table->isEditing());
        m_source->texts.removeFirst();
        m_table->reloadData();
        QVERIFY(!m_table->isEditing());
        QCOMPARE(journal(), QStringList({u"should begin"_s, u"did end"_s}));
    }

    void commandKeysComeBeforeShortcuts()
    {
        bool isMenuReached = false;
        for (const QKeySequence& keys : {QKeySequence(Qt::CTRL | Qt::Key_C), QKeySequence(Qt::CTRL | Qt::Key_T)}) {
            auto* const shortcut = new QShortcut(keys, m_table.get());
            connect(shortcut, &QShortcut::activated, this, [&isMenuReached] { isMenuReached = true; });
        }
        QTest::keyClick(m_table->windowHandle(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(journal(), QStringList({u"key c"_s}));
        QVERIFY(!isMenuReached);
        QTest::keyClick(m_table->windowHandle(), Qt::Key_T, Qt::ControlModifier);
        QVERIFY(isMenuReached);
    }

    void headerClickTogglesTheOrder()
    {
        QHeaderView* const header = m_table->horizontalHeader();
        const auto click = [header](int column) {
            const QPoint place(header->sectionViewportPosition(column) + 10, header->height() / 2);
            QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
        };
        click(textColumn);
        click(textColumn);
        click(buttonColumn);
        QCOMPARE(journal(), QStringList({u"sort Text 1"_s, u"sort Text 0"_s}));
        QCOMPARE(header->sortIndicatorSection(), textColumn);
        QCOMPARE(header->sortIndicatorOrder(), Qt::DescendingOrder);
        m_table->clearSortDescriptors();
        QCOMPARE(header->sortIndicatorSection(), -1);
        click(textColumn);
        QCOMPARE(journal().last(), u"sort Text 1"_s);
    }

    void dropsLandOnRows()
    {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(u"/x/boing.aif"_s)});
        const QPoint edge = m_table->visualRect(m_table->model()->index(1, textColumn)).topLeft() + QPoint(5, 1);
        const QPoint below(20, 250);
        const auto isMoveAccepted = [this, &data](const QPoint& position) {
            QDragMoveEvent move(position, Qt::CopyAction, &data, Qt::LeftButton, {});
            QCoreApplication::sendEvent(m_table->viewport(), &move);
            return move.isAccepted();
        };
        // What enters where nothing can be dropped may still reach a row.
        QDragEnterEvent enter(below, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(m_table->viewport(), &enter);
        QVERIFY(enter.isAccepted());
        QVERIFY(!isMoveAccepted(below));
        QCOMPARE(m_source->proposedRow, 3);
        QVERIFY(isMoveAccepted(edge));
        QDropEvent drop(edge, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(m_table->viewport(), &drop);
        QCOMPARE(journal(), QStringList({u"drop on 1 /x/boing.aif"_s}));
    }

    void dragOffersRowsAndLeavesByTheMask()
    {
        const std::unique_ptr<QMimeData> data(m_table->model()->mimeData({m_table->model()->index(2, 0)}));
        QVERIFY(data);
        QCOMPARE(Pasteboard(data.get()).stringForType(u"Row"_s), u"2"_s);
        QCOMPARE(m_table->model()->supportedDragActions(), Qt::CopyAction);
    }

    void iconColumnsKeepTheirTitleForToolTips()
    {
        const QAbstractItemModel* const model = m_table->model();
        QCOMPARE(model->headerData(buttonColumn, Qt::Horizontal, Qt::DisplayRole).toString(), QString());
        QCOMPARE(model->headerData(buttonColumn, Qt::Horizontal, Qt::ToolTipRole).toString(), u"Press"_s);
        QCOMPARE(model->index(0, buttonColumn).data(Qt::AccessibleTextRole).toString(), u"Press"_s);
        QCOMPARE(model->index(0, buttonColumn).data(Qt::ToolTipRole).toString(), u"Button (Ctrl+A)"_s);
    }

private:
    void observe()
    {
        const auto record = [this](const QString& what) {
            return [this, what] { journal().append(what.arg(m_table->selectedRow())); };
        };
        connect(m_table.get(), &TableView::selectionIsChanging, this, record(u"from %1"_s));
        connect(m_table.get(), &TableView::selectionDidChange, this, record(u"to %1"_s));
    }

    QPoint centerOf(int row, int column) const
    {
        return m_table->visualRect(m_table->model()->index(row, column)).center();
    }

    void click(int row, int column, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(m_table->viewport(), Qt::LeftButton, modifiers, centerOf(row, column));
    }

    QStringList& journal() { return m_source->journal; }

    QMenu m_menu;
    std::unique_ptr<RowSource> m_source;
    std::unique_ptr<RecordingTable> m_table;
};

QTEST_MAIN(TableViewTest)
#include "TableViewTest.moc"
