// SPDX-License-Identifier: MIT
#include "BYAppsFilesController.h"

#include <core/BYGlobals.h>
#include <platform/classic/FileTypes.h>
#include <platform/controls/Pasteboard.h>
#include <platform/desktop/Text.h>
#include <platform/panels/OpenPanel.h>
#include <platform/table/TableView.h>

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.appfiles.actions")

constexpr int tagDoNotExpand = 1;
constexpr int tagChooseDocument = 2;

const QString documentExtension = u"Blipsy"_s;
const QString applicationExtension = u"app"_s;
/// An installed application is named by its entry in the desktop's application folders.
const QString desktopEntryExtension = u"desktop"_s;

bool isDocument(const QString& path)
{
    return QFileInfo(path).suffix() == documentExtension;
}

bool isApplication(const QString& path)
{
    const QString extension = QFileInfo(path).suffix();
    return extension == applicationExtension || extension == desktopEntryExtension;
}

} // namespace

void BYAppsFilesController::appsPopUpAction(QAction* sender)
{
    const int tag = sender->data().toInt();
    qCInfo(log).noquote() << u"appsPopUpAction: %1"_s.arg(sender->text());
    qCInfo(log).noquote() << u"appsPopUpAction tag: %1"_s.arg(tag);
    const QString application = selectedApplication();
    if (!application.isEmpty() && tag == tagDoNotExpand) {
        BYGlobals::file4app()->insert(application, u""_s);
    } else if (!application.isEmpty() && tag == tagChooseDocument) {
        chooseDocumentFor(application);
    }
    savePreferences();
    reloadTable();
}

void BYAppsFilesController::chooseDocumentFor(const QString& application)
{
    OpenPanel panel(appsFilesTable);
    panel.setTitle(Text::tr("Choose a Sounds Document"));
    const QStringList types = {
        documentExtension, u"plist"_s, u"textpander"_s, FileTypes::fileTypeForHFSTypeCode(fourCharCode("XPND"))};
    if (panel.runModalForDirectory_file_types(QDir::homePath(), {}, types) == okButton) {
        for (const QString& path : panel.filenames()) {
            BYGlobals::file4app()->insert(application, path);
        }
    }
}

void BYAppsFilesController::addAppToExclusionList(QObject* /*sender*/)
{
    OpenPanel panel(appsFilesTable);
    panel.setTitle(Text::tr("Choose an Application"));
    const QStringList types = {applicationExtension, FileTypes::fileTypeForHFSTypeCode(fourCharCode("APPL"))};
    if (panel.runModalForDirectory_file_types(u"/Applications"_s, {}, types) == okButton) {
        for (const QString& path : panel.filenames()) {
            addApplication(path);
        }
    }
}

void BYAppsFilesController::addApplication(const QString& path)
{
    if (!appsToSkip.contains(path)) {
        appsToSkip.append(path);
    }
    if (!appsArray.contains(path)) {
        appsArray.append(path);
    }
    const PropertyList::DictionaryPointer file4app = BYGlobals::file4app();
    if (const PropertyList::Value* existing = file4app->find(path)) {
        qCInfo(log).noquote() << u"app already in dict with file %1"_s.arg(existing->textValue());
    } else {
        file4app->insert(path, u""_s);
    }
    applicationsChanged();
}

void BYAppsFilesController::removeAppFromExclusionList(QObject* /*sender*/)
{
    const QString application = selectedApplication();
    if (application.isEmpty()) {
        return;
    }
    appsToSkip.removeAll(application);
    appsArray.removeAll(application);
    BYGlobals::file4app()->remove(application);
    applicationsChanged();
}

void BYAppsFilesController::applicationsChanged()
{
    savePreferences();
    sortedAppsArray.reset();
    reloadTable();
}

Qt::DropAction BYAppsFilesController::tableView_validateDrop_proposedRow_proposedDropOperation(
    TableView* table, const Pasteboard& info, int row, DropOperation /*operation*/)
{
    if (row >= table->numberOfRows()) {
        return Qt::IgnoreAction;
    }
    const std::optional<QString> path = info.filename();
    return path && (isDocument(*path) || isApplication(*path)) ? Qt::CopyAction : Qt::IgnoreAction;
}

bool BYAppsFilesController::tableView_acceptDrop_row_dropOperation(
    TableView* /*table*/, const Pasteboard& info, int row, DropOperation /*operation*/)
{
    const std::optional<QString> path = info.filename();
    if (!path) {
        return false;
    }
    if (isDocument(*path)) {
        const QString application = applicationAtRow(std::max(row, 0));
        if (application.isEmpty()) {
            return false;
        }
        BYGlobals::file4app()->insert(application, *path);
    } else {
        for (const QString& dragged : info.filenames()) {
            addApplication(dragged);
        }
    }
    savePreferences();
    return true;
}
