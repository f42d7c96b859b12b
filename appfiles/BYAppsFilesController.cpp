// SPDX-License-Identifier: MIT
#include "BYAppsFilesController.h"

#include "ApplicationsModel.h"

#include <core/BYGlobals.h>
#include <core/SharedNames.h>
#include <platform/bus/DistributedNotificationCenter.h>
#include <platform/bytes/PathNames.h>
#include <platform/desktop/Workspace.h>
#include <platform/table/TableView.h>

#include <QLoggingCategory>
#include <QPushButton>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.appfiles")

BYAppsFilesController* myInstance = nullptr;

constexpr int initialCapacity = 300;

int compareNames(QStringView a, QStringView b)
{
    return a.compare(b, Qt::CaseInsensitive);
}

} // namespace

int sortbyfilename(const QString& a, const QString& b)
{
    return compareNames(lastPathComponent(a), lastPathComponent(b));
}

BYAppsFilesController::BYAppsFilesController(QObject* parent)
    : QObject(parent)
{
    myInstance = this;
    BYGlobals::init();
    BYGlobals::fillArray();
}

BYAppsFilesController::~BYAppsFilesController()
{
    qCInfo(log).noquote() << "dealloc in appsfiles..";
    if (myInstance == this) {
        myInstance = nullptr;
    }
}

BYAppsFilesController* BYAppsFilesController::sharedInstance()
{
    return myInstance;
}

void BYAppsFilesController::awakeFromNib()
{
    DistributedNotificationCenter::defaultCenter().addObserver(this, NotificationName::refreshAppsArray,
        BYGlobals::appID(), [this](const DistributedNotification&) { refresh(nullptr); });
    appsToSkip = Settings::appsFiles.value().value_or(QStringList());
    sharedInstance()->refresh(this);
    tableViewSelectionDidChange();
    if (appsFilesTable != nullptr) {
        appsFilesTable->setModel(new ApplicationsModel(*this));
        connect(
            appsFilesTable, &TableView::selectionDidChange, this, &BYAppsFilesController::tableViewSelectionDidChange);
    }
}

void BYAppsFilesController::buildAppsArray()
{
    sortedAppsArray.reset();
    appsArray.clear();
    appsArray.reserve(initialCapacity);
    appsArray.append(appsToSkip);
}

void BYAppsFilesController::refresh(QObject* /*sender*/)
{
    buildAppsArray();
    reloadTable();
}

const QStringList& BYAppsFilesController::getSortedAppsArray()
{
    if (!sortedAppsArray) {
        // Each name is found once, not once a comparison.
        std::vector<std::pair<QStringView, qsizetype>> names;
        names.reserve(size_t(appsArray.size()));
        for (const QString& path : std::as_const(appsArray)) {
            names.emplace_back(lastPathComponent(path), names.size());
        }
        std::ranges::stable_sort(
            names, [](const auto& a, const auto& b) { return compareNames(a.first, b.first) < 0; });
        sortedAppsArray.emplace();
        sortedAppsArray->reserve(appsArray.size());
        for (const auto& [name, index] : names) {
            sortedAppsArray->append(appsArray.at(index));
        }
    }
    return *sortedAppsArray;
}

QIcon BYAppsFilesController::iconForFileAtPath(const QString& path)
{
    const auto found = iconsCache.constFind(path);
    if (found != iconsCache.constEnd()) {
        return *found;
    }
    return *iconsCache.insert(path, Workspace::iconForFile(path));
}

void BYAppsFilesController::tableViewSelectionDidChange()
{
    if (removeAppButton != nullptr) {
        removeAppButton->setEnabled(appsFilesTable != nullptr && appsFilesTable->selectedRow() >= 0);
    }
}

void BYAppsFilesController::savePreferences()
{
    Settings::appsFiles.set(appsToSkip);
    Settings::file4App.set(BYGlobals::file4app());
    Changes::saveSettings({NotificationName::refreshMenu});
}
