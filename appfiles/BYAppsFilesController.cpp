#include "BYAppsFilesController.h"

#include <QLoggingCategory>
#include <QPushButton>

#include <BYGlobals.h>
#include <DistributedNotificationCenter.h>
#include <NotificationCenter.h>
#include <Preferences.h>
#include <SharedNames.h>
#include <TableView.h>
#include <Workspace.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using PropertyList::Array;
using PropertyList::ArrayPointer;
using PropertyList::Value;

namespace {

Q_LOGGING_CATEGORY(lcAppsFiles, "blipsy.appfiles")

BYAppsFilesController* myInstance = nullptr;

constexpr int initialCapacity = 300;

QStringList stringsOf(const Value& value)
{
    QStringList strings;
    if (const ArrayPointer array = value.array()) {
        for (const Value& item : std::as_const(*array)) {
            if (item.type() == PropertyList::Type::String) {
                strings.append(item.string());
            }
        }
    }
    return strings;
}

QStringView lastPathComponent(QStringView path)
{
    while (path.size() > 1 && path.endsWith(u'/')) {
        path.chop(1);
    }
    return path.sliced(path.lastIndexOf(u'/') + 1);
}

} // namespace

int sortbyfilename(const QString& a, const QString& b)
{
    return lastPathComponent(a).compare(lastPathComponent(b), Qt::CaseInsensitive);
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
    qCInfo(lcAppsFiles).noquote() << "dealloc in appsfiles..";
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
    UserDefaults& defaults = UserDefaults::standardUserDefaults();
    defaults.addSuiteNamed(BYGlobals::appID());
    appsToSkip = stringsOf(defaults.objectForKey(SettingKey::appsFiles));
    appsFilesTable->setDataSource(this);
    sharedInstance()->refresh(this);
    buildCells();
    appsFilesTable->registerForDraggedTypes();
    NotificationCenter::defaultCenter().addObserver(this, TableView::selectionDidChangeNotification, appsFilesTable,
        [this](const Notification& notification) { tableViewSelectionDidChange(notification); });
    removeAppButton->setEnabled(appsFilesTable->selectedRow() >= 0);
}

void BYAppsFilesController::buildCells()
{
    iconColumn = appsFilesTable->tableColumnWithIdentifier(u"icon"_s);
    appColumn = appsFilesTable->tableColumnWithIdentifier(u"application"_s);
    pathColumn = appsFilesTable->tableColumnWithIdentifier(u"assocFile"_s);
    popUpColumn = appsFilesTable->tableColumnWithIdentifier(u"actionPopUp"_s);
    iconColumn->setDataCell(std::make_shared<ImageCell>());
    const auto cell = std::make_shared<PopUpButtonCell>();
    cell->setEditable(true);
    cell->setMenu(appsPopUp);
    popUpColumn->setDataCell(cell);
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
    appsFilesTable->reloadData();
}

const QStringList& BYAppsFilesController::getSortedAppsArray()
{
    if (!sortedAppsArray) {
        sortedAppsArray = appsArray;
        std::stable_sort(sortedAppsArray->begin(), sortedAppsArray->end(),
            [](const QString& a, const QString& b) { return sortbyfilename(a, b) < 0; });
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

void BYAppsFilesController::tableViewSelectionDidChange(const Notification& notification)
{
    const auto* table = qobject_cast<TableView*>(notification.object);
    removeAppButton->setEnabled(table != nullptr && table->selectedRow() >= 0);
}

void BYAppsFilesController::savePreferences()
{
    const ArrayPointer paths = Array::create();
    for (const QString& path : std::as_const(appsToSkip)) {
        paths->append(path);
    }
    Preferences::setValue(SettingKey::appsFiles, paths, BYGlobals::appID());
    Preferences::setValue(SettingKey::file4App, BYGlobals::file4app(), BYGlobals::appID());
    Preferences::synchronize(BYGlobals::appID());
    BYGlobals::sendNotification(NotificationName::refreshMenu);
}
