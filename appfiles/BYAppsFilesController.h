// SPDX-License-Identifier: MIT
#pragma once

#include <platform/plist/PropertyList.h>

#include <QHash>
#include <QIcon>
#include <QObject>
#include <QStringList>

#include <optional>

class Pasteboard;
class QAction;
class QMenu;
class QPushButton;
class TableView;
enum class DropOperation;

/// Compares the file names of two paths, folders aside, without regard to letter case: negative, zero or positive.
/// Paths of equal names keep the order in which they were added.
int sortbyfilename(const QString& a, const QString& b);

/// Controller of the table that says which sounds document serves which application. Each row is one application of the
/// user's list; every change is stored at once and the helper is told. Main thread only.
class BYAppsFilesController final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(BYAppsFilesController)

public:
    /// Records itself as the shared instance, sets up the pane's shared state and loads the document.
    explicit BYAppsFilesController(QObject* parent = nullptr);
    ~BYAppsFilesController() override;

    /// The controller created last; null when there is none.
    static BYAppsFilesController* sharedInstance();

    /// @name Outlets, connected by the interface; one that is null is left out
    /// @{
    TableView* appsFilesTable = nullptr;
    QPushButton* removeAppButton = nullptr;
    /// The menu of the rows; the data of an action is its tag.
    QMenu* appsPopUp = nullptr;
    /// @}

    /// One-time set-up, when all outlets are connected.
    void awakeFromNib();

    /// @name The list of applications
    /// @{

    /// Makes the working list again from the stored list in memory.
    void buildAppsArray();
    /// The same, and reloads the table.
    void refresh(QObject* sender);
    /// The applications' paths in the order shown.
    const QStringList& getSortedAppsArray();
    /// The icon of the file at @p path, asked of the workspace once per path.
    QIcon iconForFileAtPath(const QString& path);
    /// @}

    /// @name The table's data
    /// @{
    static const QString iconColumn;
    static const QString appColumn;
    static const QString pathColumn;
    static const QString popUpColumn;
    int numberOfRowsInTableView(TableView* table);
    QVariant tableView_objectValueForTableColumn_row(TableView* table, const QString& column, int row);
    QString tableView_toolTipForTableColumn_row(TableView* table, const QString& column, int row);
    QString tableView_accessibleTextForTableColumn_row(TableView* table, const QString& column, int row);
    Qt::DropAction tableView_validateDrop_proposedRow_proposedDropOperation(
        TableView* table, const Pasteboard& info, int row, DropOperation operation);
    bool tableView_acceptDrop_row_dropOperation(
        TableView* table, const Pasteboard& info, int row, DropOperation operation);
    /// @}

    /// Enables the remove button while the table has a selected row.
    void tableViewSelectionDidChange();
    /// Gives the selected application what the menu item's tag says: 1 no document, 2 a document that the user chooses.
    void appsPopUpAction(QAction* sender);
    /// Lets the user choose an application and adds it.
    void addAppToExclusionList(QObject* sender);
    /// Takes the selected application, and what it uses, off the list.
    void removeAppFromExclusionList(QObject* sender);
    /// Stores the list and the map, and tells the helper.
    void savePreferences();

private:
    void addApplication(const QString& path);
    void chooseDocumentFor(const QString& application);
    void applicationsChanged();
    void reloadTable();
    QString selectedApplication();
    QString applicationAtRow(int row);
    QString documentTextFor(const QString& application) const;

    QStringList appsArray;
    QStringList appsToSkip;
    QHash<QString, QIcon> iconsCache;
    QHash<QString, QString> m_displayNames;
    std::optional<QStringList> sortedAppsArray;
};
