// SPDX-License-Identifier: MIT
#include "BYAppsFilesController.h"

#include <core/BYGlobals.h>
#include <platform/desktop/Text.h>
#include <platform/desktop/Workspace.h>
#include <platform/table/TableView.h>

#include <QFileInfo>

using namespace Qt::StringLiterals;
using PropertyList::DictionaryPointer;

const QString BYAppsFilesController::iconColumn = u"icon"_s;
const QString BYAppsFilesController::appColumn = u"application"_s;
const QString BYAppsFilesController::pathColumn = u"assocFile"_s;
const QString BYAppsFilesController::popUpColumn = u"actionPopUp"_s;

int BYAppsFilesController::numberOfRowsInTableView(TableView* /*table*/)
{
    return int(appsArray.size());
}

QString BYAppsFilesController::applicationAtRow(int row)
{
    return getSortedAppsArray().value(row);
}

QString BYAppsFilesController::selectedApplication()
{
    return appsFilesTable != nullptr ? applicationAtRow(appsFilesTable->selectedRow()) : QString();
}

void BYAppsFilesController::reloadTable()
{
    if (appsFilesTable != nullptr) {
        appsFilesTable->reloadData();
    }
}

/// What is done in an application. A document that has gone shows as such, since the helper finds nothing in it.
QString BYAppsFilesController::documentTextFor(const QString& application) const
{
    const DictionaryPointer file4app = BYGlobals::file4app();
    const QString document = file4app ? file4app->value(application).string() : QString();
    if (!file4app || (!document.isEmpty() && !QFileInfo::exists(document))) {
        return Text::tr("missing file");
    }
    if (document.isEmpty()) {
        return Text::tr("do not expand");
    }
    return Text::tr("expand using: %@").replace(u"%@"_s, QFileInfo(document).completeBaseName());
}

QVariant BYAppsFilesController::tableView_objectValueForTableColumn_row(
    TableView* /*table*/, const QString& column, int row)
{
    const QString application = applicationAtRow(row);
    if (application.isEmpty()) {
        return {};
    }
    if (column == iconColumn) {
        return iconForFileAtPath(application);
    }
    if (column == appColumn) {
        QString& name = m_displayNames[application];
        if (name.isEmpty()) {
            name = Workspace::displayNameAtPath(application);
        }
        return name;
    }
    if (column == pathColumn) {
        return documentTextFor(application);
    }
    return {};
}

QString BYAppsFilesController::tableView_toolTipForTableColumn_row(TableView* /*table*/, const QString& column, int row)
{
    const QString application = applicationAtRow(row);
    if (column == pathColumn) {
        return BYGlobals::file4app()->value(application).string();
    }
    if (column == popUpColumn) {
        return Text::tr("Choose what is done in this application");
    }
    return application;
}

QString BYAppsFilesController::tableView_accessibleTextForTableColumn_row(
    TableView* table, const QString& column, int row)
{
    return column == popUpColumn ? tableView_toolTipForTableColumn_row(table, column, row) : QString();
}
