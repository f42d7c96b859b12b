// SPDX-License-Identifier: MIT
#include <platform/controls/Matrix.h>
#include <platform/controls/Pasteboard.h>
#include <platform/controls/Slider.h>
#include <platform/controls/TemplateIcon.h>
#include <platform/controls/WheelGuard.h>
#include <platform/keyboard/KeyCharacters.h>

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGridLayout>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <DataTable.h>

#include <limits>

using namespace Qt::StringLiterals;

class ControlsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void radioMatrixAnswersPositionsAndTags()
    {
        Matrix matrix;
        auto* const grid = new QGridLayout(&matrix);
        for (int column = 0; column < 3; ++column) {
            auto* const cell = new QRadioButton(&matrix);
            cell->setProperty("tag", column + 20);
            grid->addWidget(cell, 1, column);
        }
        QSignalSpy actions(&matrix, &Matrix::acted);
        QCOMPARE(matrix.numberOfColumns(), 3);
        QCOMPARE(matrix.selectedColumn(), -1);

        matrix.setState_atRow_column(true, 1, 2);
        matrix.setState_atRow_column(true, 0, 0);
        QCOMPARE(matrix.selectedColumn(), 2);
        QCOMPARE(matrix.selectedRow(), 1);
        QVERIFY(actions.isEmpty());

        matrix.cellAtRow_column(1, 0)->click();
        QCOMPARE(actions.size(), 1);
        QCOMPARE(Matrix::tagOf(matrix.selectedCell()), 20);
        matrix.setState_atRow_column(false, 1, 0);
        QCOMPARE(matrix.selectedCell(), nullptr);
        QCOMPARE(Matrix::tagOf(nullptr), 0);
    }

    void checkBoxMatrixAnswersTheOneClicked()
    {
        Matrix matrix;
        auto* const line = new QVBoxLayout(&matrix);
        QList<QCheckBox*> boxes;
        for (int row = 0; row < 3; ++row) {
            boxes.append(new QCheckBox(&matrix));
            line->addWidget(boxes.last());
        }
        QSignalSpy actions(&matrix, &Matrix::acted);
        matrix.selectAll();
        QVERIFY(boxes.at(0)->isChecked() && boxes.at(2)->isChecked());
        boxes.at(1)->click();
        QCOMPARE(matrix.selectedCell(), boxes.at(1));
        QCOMPARE(matrix.selectedRow(), 1);
        matrix.deselectAllCells();
        QVERIFY(!boxes.at(0)->isChecked() && !boxes.at(2)->isChecked());
        QCOMPARE(actions.size(), 1);
    }

    void sliderKeepsCodeValuesExactly_data()
    {
        const DataTable<float, QString> row("value", "text");
        row("half", 0.5F, u"0.5"_s);
        row("full", 1.0F, u"1"_s);
        row("between two steps", 0.12345F, u"0.12345"_s);
        row("too much", 7.0F, u"1"_s);
        row("negative", -1.0F, u"0"_s);
        row("not a number", std::numeric_limits<float>::quiet_NaN(), u"0"_s);
    }

    void sliderKeepsCodeValuesExactly()
    {
        QFETCH(float, value);
        Slider slider;
        QSignalSpy actions(&slider, &Slider::acted);
        slider.setFloatValue(value);
        QTEST(slider.stringValue(), "text");
        QVERIFY(actions.isEmpty());
    }

    void sliderSendsItsActionForTheUserOnly()
    {
        Slider slider;
        QSignalSpy actions(&slider, &Slider::acted);
        slider.setFloatValue(0.5F);
        QTest::keyClick(&slider, Qt::Key_Right);
        QCOMPARE(actions.size(), 1);
        QCOMPARE(slider.stringValue(), u"0.51"_s);
        slider.resize(400, 30);
        QTest::mouseClick(&slider, Qt::LeftButton, {}, {100, 15});
        QCOMPARE(actions.size(), 2);
        QVERIFY(slider.floatValue() > 0.2F && slider.floatValue() < 0.3F);
    }

    void pasteboardCarriesTypesOverTheClipboard()
    {
        const QString type = u"com.Blipsy.clipping"_s;
        Pasteboard pasteboard = Pasteboard::generalPasteboard();
        pasteboard.declareTypes({Pasteboard::stringType, type});
        pasteboard.setString_forType(u"/tmp/ü.aif"_s, Pasteboard::stringType);
        pasteboard.setString_forType(u"/tmp/ü.aif"_s, type);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"/tmp/ü.aif"_s);
        QCOMPARE(Pasteboard::generalPasteboard().stringForType(type), u"/tmp/ü.aif"_s);

        QGuiApplication::clipboard()->setText(u"other"_s);
        QVERIFY(Pasteboard::generalPasteboard().hasType(Pasteboard::stringType));
        QVERIFY(!Pasteboard::generalPasteboard().stringForType(type));
    }

    void pasteboardReadsDraggedFiles()
    {
        QMimeData data;
        const Pasteboard pasteboard(&data);
        QVERIFY(!pasteboard.filename());
        QList<QUrl> urls = {QUrl(u"file://localhost/b%20c.wav"_s), QUrl(u"file://elsewhere/d.wav"_s),
            QUrl(u"file:///Boings/"_s), QUrl(u"file:///"_s), QUrl(u"file://elsewhere"_s)};
        data.setUrls(urls);
        QCOMPARE(pasteboard.filename(), u"/b c.wav"_s);
        urls.prepend(QUrl(u"http://example.com/a.wav"_s));
        data.setUrls(urls);
        QVERIFY(!pasteboard.filename());
        QCOMPARE(pasteboard.filenames(), (QStringList{u"/b c.wav"_s, u"/d.wav"_s, u"/Boings"_s, u"/"_s}));
    }

    void keysMeanCharacters_data()
    {
        const DataTable<int, Qt::KeyboardModifiers, QString, QString> row("key", "modifiers", "text", "characters");
        const Qt::KeyboardModifiers none;
        const Qt::KeyboardModifiers command = Qt::ControlModifier;
        row("letter", Qt::Key_A, none, u"a"_s, u"a"_s);
        row("command letter", Qt::Key_A, command, u"\x01"_s, u"a"_s);
        row("command delete", Qt::Key_Backspace, command, u"\b"_s, u"\x7f"_s);
        row("forward delete", Qt::Key_Delete, none, u"\x7f"_s, u"\x7f"_s);
        row("keypad Enter", Qt::Key_Enter, none, u"\r"_s, u"\x03"_s);
        row("left arrow", Qt::Key_Left, command, {}, QString(QChar(0xF702)));
        row("third level", Qt::Key_At, (command | Qt::AltModifier), u"@"_s, u"@"_s);
        row("no character", Qt::Key_F5, command, {}, {});
    }

    void keysMeanCharacters()
    {
        const auto [key, modifiers, text] = currentRow<int, Qt::KeyboardModifiers, QString>();
        QTEST(keyCharacters(QKeyEvent(QEvent::KeyPress, key, modifiers, text)), "characters");
    }

    void wheelChangesOnlyTheFocusedControl()
    {
        QWidget page;
        auto* const box = new QComboBox(&page);
        box->addItems({u"a"_s, u"b"_s, u"c"_s});
        box->setFocusPolicy(Qt::WheelFocus);
        const WheelGuard* const guard = new WheelGuard(&page);
        QCOMPARE(guard->parent(), &page);
        page.show();
        page.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&page));
        page.setFocus();
        const auto turnWheel = [box] {
            QWheelEvent wheel({5, 5}, {5, 5}, {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(box, &wheel);
            return wheel.isAccepted();
        };
        box->clearFocus();
        QVERIFY(!turnWheel());
        QCOMPARE(box->currentIndex(), 0);
        QCOMPARE(box->focusPolicy(), Qt::StrongFocus);
        box->setFocus();
        turnWheel();
        QCOMPARE(box->currentIndex(), 1);
    }

    void templateIconTakesThePalettesColour()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"dot.tif"_s);
        QImage shape(16, 16, QImage::Format_ARGB32);
        shape.fill(Qt::transparent);
        QPainter(&shape).fillRect(4, 4, 8, 8, Qt::black);
        QVERIFY(shape.save(path));
        const QIcon icon = templateIcon(path);

        const QPalette before = QGuiApplication::palette();
        QPalette dark = before;
        dark.setColor(QPalette::Text, QColor(250, 240, 230));
        dark.setColor(QPalette::HighlightedText, QColor(1, 2, 3));
        QGuiApplication::setPalette(dark);
        QCOMPARE(icon.pixmap(16).toImage().pixelColor(8, 8), QColor(250, 240, 230));
        QCOMPARE(icon.pixmap(16).toImage().pixelColor(1, 1).alpha(), 0);
        QCOMPARE(icon.pixmap(QSize(16, 16), QIcon::Selected).toImage().pixelColor(8, 8), QColor(1, 2, 3));
        QGuiApplication::setPalette(before);
        QVERIFY(templateIcon(folder.filePath(u"none.tif"_s)).isNull());
    }
};

QTEST_MAIN(ControlsTest)
#include "ControlsTest.moc"
