// SPDX-License-Identifier: MIT
#include "FilePanel.h"

#include "PanelFilter.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTreeView>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The first row of a file dialog's grid below its file list.
constexpr int rowBelowList = 2;

/// A text of the file dialog itself, whose translation comes with the toolkit.
QString toolkitText(const char* text)
{
    return QFileDialog::tr(text);
}

/// Moves the items from @p firstRow on down by one row.
void makeRow(QGridLayout& grid, int firstRow)
{
    struct Moved
    {
        QLayoutItem* item;
        int row;
        int column;
        int rowSpan;
        int columnSpan;
    };

    QList<Moved> moved;
    for (int i = grid.count() - 1; i >= 0; --i) {
        Moved place{};
        grid.getItemPosition(i, &place.row, &place.column, &place.rowSpan, &place.columnSpan);
        if (place.row >= firstRow) {
            place.item = grid.takeAt(i);
            moved.append(place);
        }
    }
    for (const Moved& place : moved) {
        grid.addItem(place.item, place.row + 1, place.column, place.rowSpan, place.columnSpan);
    }
}

} // namespace

void hideTypes(QFileDialog& dialog)
{
    for (const QString& name : {u"fileTypeCombo"_s, u"fileTypeLabel"_s}) {
        if (auto* const widget = dialog.findChild<QWidget*>(name)) {
            widget->hide();
        }
    }
    // The kind that the file system tells is a word too long for its column; the name and the icon say as much.
    constexpr int kindColumn = 2;
    dialog.findChild<QTreeView*>(u"treeView"_s)->hideColumn(kindColumn);
}

FilePanel::FilePanel(const PanelRules& rules, QWidget* parent)
    : QFileDialog(parent)
    , m_rules(rules)
{
    setObjectName(u"OpenPanel"_s);
    setOption(DontUseNativeDialog);
    setAcceptMode(AcceptOpen);
    // Only in this mode does the dialog take folders for an answer; accept() lets files be chosen in it too.
    setFileMode(rules.canChooseDirectories ? Directory : rules.allowsMultipleSelection ? ExistingFiles : ExistingFile);
    setOption(ShowDirsOnly, false);
    setProxyModel(new PanelFilter(rules.types, rules.canChooseFiles, this));
    setViewMode(Detail);
    setLabelText(FileName, toolkitText("File &name:"));
    setLabelText(Accept, toolkitText("&Open"));
    hideTypes(*this);
    auto* const list = findChild<QListView*>(u"listView"_s);
    if (!rules.allowsMultipleSelection) {
        list->setSelectionMode(QAbstractItemView::SingleSelection);
        findChild<QAbstractItemView*>(u"treeView"_s)->setSelectionMode(QAbstractItemView::SingleSelection);
    }
    connect(listSelection(), &QItemSelectionModel::selectionChanged, this, &FilePanel::selectionDidChange);
    // In the mode for folders the dialog disables its button for files; queued, so that ours is the last word.
    connect(this, &FilePanel::selectionDidChange, this, &FilePanel::enableOpenButton, Qt::QueuedConnection);
    connect(findChild<QLineEdit*>(u"fileNameEdit"_s), &QLineEdit::textChanged, this, &FilePanel::enableOpenButton,
        Qt::QueuedConnection);
}

FilePanel::~FilePanel()
{
    if (m_accessory) {
        m_accessory->hide();
        m_accessory->setParent(m_accessoryParent);
    }
    // The toolkit stores the places for the file dialogs of all programs when the dialog goes.
    if (!m_place.isEmpty()) {
        QList<QUrl> places = sidebarUrls();
        places.removeAll(m_place);
        setSidebarUrls(places);
    }
}

void FilePanel::addPlace(const QString& folder)
{
    const QUrl place = QUrl::fromLocalFile(folder);
    const QList<QUrl> places = sidebarUrls();
    if (!places.contains(place)) {
        m_place = place;
        setSidebarUrls(places + QList<QUrl>{place});
    }
}

void FilePanel::setAccessoryView(QWidget* view)
{
    auto* const grid = qobject_cast<QGridLayout*>(layout());
    m_accessory = view;
    m_accessoryParent = view->parentWidget();
    makeRow(*grid, rowBelowList);
    grid->addWidget(view, rowBelowList, 0, 1, grid->columnCount());
    view->show();
}

QItemSelectionModel* FilePanel::listSelection() const
{
    return findChild<QListView*>(u"listView"_s)->selectionModel();
}

QStringList FilePanel::selection() const
{
    QStringList paths;
    for (const QModelIndex& index : listSelection()->selectedRows()) {
        paths.append(index.data(QFileSystemModel::FilePathRole).toString());
    }
    return paths;
}

void FilePanel::enableOpenButton()
{
    if (areChoosable(selectedFiles())) {
        findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->setEnabled(true);
    }
}

bool FilePanel::areChoosable(const QStringList& paths) const
{
    return !paths.isEmpty() &&
           std::all_of(paths.begin(), paths.end(), [this](const QString& path) { return canChoose(path); });
}

bool FilePanel::canChoose(const QString& path) const
{
    const QFileInfo file(path);
    const bool isBundle = m_rules.types.offersApplications() && file.suffix() == "app"_L1;
    if (file.isDir() && !isBundle) {
        return m_rules.canChooseDirectories;
    }
    return file.exists() && m_rules.canChooseFiles && m_rules.types.accepts(path);
}

void FilePanel::accept()
{
    const QStringList paths = selectedFiles();
    const bool areFilesRefused = std::any_of(paths.begin(), paths.end(),
        [this](const QString& path) { return QFileInfo(path).isFile() && !canChoose(path); });
    if (areChoosable(paths)) {
        done(Accepted);
    } else if (!areFilesRefused) {
        // The dialog's own part: enters a folder whose name was typed, says what is wrong with a name.
        QFileDialog::accept();
    }
}
