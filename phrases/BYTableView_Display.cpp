// SPDX-License-Identifier: MIT
#include "BYTableView.h"

#include <core/BYGlobals.h>
#include <core/SharedNames.h>
#include <platform/bytes/PathNames.h>
#include <platform/desktop/Workspace.h>

#include <QLabel>

using namespace Qt::StringLiterals;

using PropertyList::Dictionary;
using PropertyList::DictionaryPointer;

namespace {

bool hasSound(const Dictionary& entry)
{
    const PropertyList::Value* path = entry.find(PhraseKey::soundFilepath);
    // An absent key counts as a sound: the first click on the cell then stores the empty string.
    return !path || path->type() != PropertyList::Type::String || !path->stringView().isEmpty();
}

} // namespace

int BYTableView::numberOfRowsInTableView(TableView*)
{
    const PropertyList::ArrayPointer phrases = BYGlobals::clippingsArray();
    const int count = phrases ? int(phrases->size()) : 0;
    if (numClippings) {
        numClippings->setText(localized(u"%d clippings"_s).replace(u"%d"_s, QString::number(count)));
    }
    return count;
}

QVariant BYTableView::tableView_objectValueForTableColumn_row(TableView*, TableColumn* column, int row)
{
    if (row == 1) {
        sizeLastColumnToFit();
    }
    const DictionaryPointer entry = entryAt(row);
    Cell* cell = column->dataCellForRow(row);
    cell->setDimmed(false);
    const QString& identifier = column->identifier();
    const auto showImage = [cell](const QIcon& image) {
        cell->setImage(image);
        return QVariant();
    };
    if (!entry) {
        return showImage({});
    }
    if (identifier == PhraseKey::app) {
        const QString application = entry->value(PhraseKey::app).textValue();
        if (application.isEmpty()) {
            return showImage(genericAppIcon);
        }
        cell->setImage(iconForApplication(application));
        return cell->image();
    }
    if (identifier == u"Play") {
        return showImage(playIcon);
    }
    if (identifier == u"Reveal") {
        return showImage(revealIcon);
    }
    if (identifier == u"Trash") {
        return showImage(hasSound(*entry) ? trashIcon : addIcon);
    }
    if (identifier == PhraseKey::phrase) {
        return entry->value(PhraseKey::phrase).textValue();
    }
    return textOrFileName(*cell, entry->value(identifier).textValue(), identifier == PhraseKey::soundFilepath);
}

// A path shows as its file name, the placeholder of a picture in a text as words.
QVariant BYTableView::textOrFileName(Cell& cell, const QString& stored, bool isSound)
{
    cell.setDimmed(isSound && isMissing(stored));
    QString text = stored;
    return lastPathComponent(text.replace(attachChar, localized(u"(Picture)"_s))).toString();
}

bool BYTableView::isMissing(const QString& soundPath)
{
    return !soundPath.isEmpty() && !m_fileExistence.exists(soundPath);
}

QString BYTableView::tableView_toolTipForTableColumn_row(TableView*, TableColumn* column, int row)
{
    const DictionaryPointer entry = entryAt(row);
    if (!entry) {
        return {};
    }
    const QString& identifier = column->identifier();
    if (identifier == PhraseKey::soundFilepath) {
        const QString path = entry->value(PhraseKey::soundFilepath).textValue();
        return isMissing(path) ? localized(u"%@\nThis sound cannot be found."_s).replace(u"%@"_s, path) : path;
    }
    if (identifier == PhraseKey::app) {
        const QString application = entry->value(PhraseKey::app).textValue();
        return application.isEmpty() ? localized(u"In every application: click to choose one"_s) : application;
    }
    if (identifier == u"Play") {
        return localized(u"Play the sound"_s);
    }
    if (identifier == u"Reveal") {
        return localized(u"Show the sound in the file manager"_s);
    }
    if (identifier == u"Trash") {
        return hasSound(*entry) ? localized(u"Take the sound away"_s) : localized(u"Choose a sound"_s);
    }
    return {};
}

QString BYTableView::tableView_accessibleTextForTableColumn_row(TableView* table, TableColumn* column, int row)
{
    const QString& identifier = column->identifier();
    const bool isText = identifier == PhraseKey::phrase || identifier == PhraseKey::soundFilepath;
    return isText ? QString() : tableView_toolTipForTableColumn_row(table, column, row);
}

QIcon BYTableView::iconForApplication(const QString& path) const
{
    return Workspace::iconForFile(path);
}
