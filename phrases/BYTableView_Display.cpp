// SPDX-License-Identifier: MIT
#include "BYTableView.h"

#include <core/BYGlobals.h>
#include <core/Phrase.h>
#include <platform/bytes/PathNames.h>
#include <platform/desktop/Text.h>
#include <platform/desktop/Workspace.h>
#include <sounds/RowButtons.h>

#include <QLabel>

using namespace Qt::StringLiterals;

int BYTableView::numberOfRowsInTableView(TableView*)
{
    const PropertyList::ArrayPointer phrases = BYGlobals::clippingsArray();
    const int count = phrases ? int(phrases->size()) : 0;
    if (numClippings) {
        numClippings->setText(Text::tr("%d clippings").replace(u"%d"_s, QString::number(count)));
    }
    return count;
}

QVariant BYTableView::tableView_objectValueForTableColumn_row(TableView*, const QString& column, int row)
{
    if (row == 1) {
        sizeLastColumnToFit();
    }
    const Phrase phrase = entryAt(row);
    if (!phrase) {
        return {};
    }
    if (column == PhraseKey::app) {
        const QString application = phrase.app();
        return application.isEmpty() ? genericAppIcon : iconForApplication(application);
    }
    if (column == RowButtons::playColumn) {
        return playIcon;
    }
    if (column == RowButtons::revealColumn) {
        return revealIcon;
    }
    if (column == RowButtons::trashColumn) {
        return phrase.hasSound() ? trashIcon : addIcon;
    }
    QString text = phrase->value(column).textValue();
    if (column != PhraseKey::phrase) {
        // A path shows as its file name, the placeholder of a picture in a text as words.
        text = lastPathComponent(text.replace(attachChar, Text::tr("(Picture)"))).toString();
    }
    return text;
}

bool BYTableView::isSoundMissing(int row)
{
    const Phrase phrase = entryAt(row);
    return phrase && isMissing(phrase.soundFilepath());
}

bool BYTableView::isMissing(const QString& soundPath)
{
    return !soundPath.isEmpty() && !m_fileExistence.exists(soundPath);
}

QString BYTableView::tableView_toolTipForTableColumn_row(TableView*, const QString& column, int row)
{
    const Phrase phrase = entryAt(row);
    if (!phrase) {
        return {};
    }
    if (column == PhraseKey::soundFilepath) {
        const QString path = phrase.soundFilepath();
        return isMissing(path) ? Text::tr("%@\nThis sound cannot be found.").replace(u"%@"_s, path) : path;
    }
    if (column == PhraseKey::app) {
        const QString application = phrase.app();
        return application.isEmpty() ? Text::tr("In every application: click to choose one") : application;
    }
    return RowButtons::toolTip(column, phrase.hasSound());
}

QString BYTableView::tableView_accessibleTextForTableColumn_row(TableView* table, const QString& column, int row)
{
    const bool isText = column == PhraseKey::phrase || column == PhraseKey::soundFilepath;
    return isText ? QString() : tableView_toolTipForTableColumn_row(table, column, row);
}

QIcon BYTableView::iconForApplication(const QString& path) const
{
    return Workspace::iconForFile(path);
}
