// SPDX-License-Identifier: MIT
#include <platform/archive/KeyedArchive.h>
#include <platform/controls/Pasteboard.h>
#include <platform/panels/OpenPanel.h>
#include <sounds/RemovalQuestion.h>
#include <sounds/SoundChooser.h>
#include <sounds/SoundDrop.h>
#include <sounds/SoundKinds.h>
#include <sounds/SoundPasteboard.h>

#include <QClipboard>
#include <QFileInfo>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include <DataTable.h>
#include <ModalDriver.h>

using namespace Qt::StringLiterals;

class SoundsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void panelOffersTheKindsInOrder()
    {
        QCOMPARE(SoundKinds::openPanelTypes().join(u' '), u"aif aiff mov wav m4a mp3 sfil 'SFIL'"_s);
    }

    void dropIsJudgedByTheExtensionAsSpelt_data()
    {
        const DataTable<QString, bool> row("path", "accepted");
        for (const char* extension : {"wav", "m4a", "mp3", "aiff", "mov", "sfil", "aif"}) {
            row(extension, u"/s/boing."_s + QString::fromLatin1(extension), true);
        }
        row("no extension", u"/s/boing"_s, true);
        row("hidden file", u"/s/.boing"_s, true);
        row("capitals", u"/s/boing.WAV"_s, false);
        row("other kind", u"/s/boing.txt"_s, false);
        row("nothing", {}, false);
    }

    void dropIsJudgedByTheExtensionAsSpelt()
    {
        const auto [path, accepted] = currentRow<QString, bool>();
        const auto dropped = path.isEmpty() ? std::nullopt : std::optional(path);
        QCOMPARE(SoundKinds::dropOperation(dropped), accepted ? Qt::CopyAction : Qt::IgnoreAction);
    }

    void draggedRowsTravelAsAnIndexSet()
    {
        Pasteboard pasteboard;
        QVERIFY(SoundDrop::writeRows({3, 4}, pasteboard));
        const auto data = pasteboard.dataForType(u"MyPrivateTableViewDataType"_s);
        QVERIFY(data);
        QCOMPARE(*data, KeyedArchive::archivedIndexSet({4, 3}));
    }

    void onlyCopiedSoundsArePasted()
    {
        SoundPasteboard::copy(u"/s/boing.aif"_s);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"/s/boing.aif"_s);
        QCOMPARE(SoundPasteboard::paste(), u"/s/boing.aif"_s);
        QGuiApplication::clipboard()->setText(u"/s/other.aif"_s);
        QVERIFY(!SoundPasteboard::paste());
    }

    void panelButtonsFollowTheSelection()
    {
        QWidget view;
        QPushButton play;
        QPushButton stop;
        QPushButton favourites;
        OpenPanel panel;
        SoundChooser chooser;
        SoundChooser::Actions actions;
        actions.selectionDidChange = [&] { chooser.selectionDidChange(QFileInfo(chooser.selectedPath()).isDir()); };
        chooser.prepare(panel, {.view = &view, .play = &play, .stop = &stop, .addToFavourites = &favourites}, actions);
        const ModalDriver driver([&](QWidget* modal) {
            QVERIFY(!play.isEnabled() && !stop.isEnabled() && !favourites.isEnabled());
            auto* const list = modal->findChild<QListView*>(u"listView"_s);
            QTRY_VERIFY(list->model()->rowCount(list->rootIndex()) > 0);
            play.setEnabled(true);
            list->setCurrentIndex(list->model()->index(0, 0, list->rootIndex()));
            QVERIFY(!play.isEnabled() && favourites.isEnabled());
            qobject_cast<QDialog*>(modal)->reject();
        });
        QVERIFY(!chooser.run({}));
        QVERIFY(driver.wasAnswered());
    }

    void previewButtonsServeTheTableThatCameLast()
    {
        QPushButton play;
        OpenPanel panel;
        QStringList heard;
        SoundChooser phrases;
        SoundChooser events;
        SoundChooser::Actions actions;
        actions.play = [&] { heard.append(u"first"_s); };
        phrases.prepare(panel, {.play = &play}, actions);
        actions.play = [&] { heard.append(u"second"_s); };
        events.prepare(panel, {.play = &play}, actions);
        play.setEnabled(true);
        play.click();
        QCOMPARE(heard, QStringList{u"second"_s});
    }

    void removalIsConfirmedByItsVerbOnly_data()
    {
        const DataTable<QString, bool> row("button", "confirmed");
        row("Remove", u"Remove"_s, true);
        row("Cancel", u"Cancel"_s, false);
    }

    void removalIsConfirmedByItsVerbOnly()
    {
        QFETCH(QString, button);
        const ModalDriver driver([&button](QWidget* modal) {
            QCOMPARE(modal->windowTitle(), u"Confirm remove"_s);
            QCOMPARE(qobject_cast<QMessageBox*>(modal)->informativeText(), u"Sure?"_s);
            ModalDriver::click(button)(modal);
        });
        QTEST(RemovalQuestion::confirm(nullptr, u"Sure?"_s), "confirmed");
    }
};

QTEST_MAIN(SoundsTest)
#include "SoundsTest.moc"
