// SPDX-License-Identifier: MIT
#include "ApplicationPanel.h"

#include <platform/desktop/DesktopApplications.h>
#include <platform/desktop/Text.h>
#include <platform/desktop/Workspace.h>

#include <QAbstractListModel>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QHash>
#include <QIcon>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int iconSize = 32;
constexpr int pathRole = Qt::UserRole;

/// The installed applications. Icons are looked up for the rows that are seen.
class ApplicationModel final : public QAbstractListModel
{
public:
    explicit ApplicationModel(QObject* parent)
        : QAbstractListModel(parent)
        , m_entries(DesktopApplications::installed())
    {
    }

    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
    }

    QVariant data(const QModelIndex& index, int role) const override
    {
        const DesktopApplications::Entry& entry = m_entries.at(index.row());
        switch (role) {
        case Qt::DisplayRole:
            return entry.name;
        case Qt::DecorationRole:
            return icon(entry);
        case pathRole:
            return entry.path;
        default:
            return {};
        }
    }

private:
    QIcon icon(const DesktopApplications::Entry& entry) const
    {
        QIcon& known = m_icons[entry.path];
        if (known.isNull()) {
            known = DesktopApplications::iconOf(entry);
        }
        if (known.isNull()) {
            known = Workspace::genericApplicationIcon();
        }
        return known;
    }

    QList<DesktopApplications::Entry> m_entries;
    mutable QHash<QString, QIcon> m_icons;
};

} // namespace

ApplicationPanel::ApplicationPanel(QWidget* parent)
    : QDialog(parent)
    , m_search(new QLineEdit(this))
    , m_list(new QListView(this))
    , m_filter(new QSortFilterProxyModel(this))
{
    setObjectName(u"OpenPanel"_s);
    setWindowTitle(Text::tr("Applications"));
    resize(420, 480);
    m_search->setPlaceholderText(Text::tr("Search"));
    m_search->setClearButtonEnabled(true);
    m_filter->setSourceModel(new ApplicationModel(this));
    m_filter->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_list->setModel(m_filter);
    m_list->setIconSize(QSize(iconSize, iconSize));
    m_list->setUniformItemSizes(true);
    m_list->setAccessibleName(Text::tr("Applications"));

    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Open | QDialogButtonBox::Cancel, this);
    m_openButton = buttons->button(QDialogButtonBox::Open);
    auto* const browseButton = buttons->addButton(Text::tr("Other…"), QDialogButtonBox::ActionRole);
    auto* const column = new QVBoxLayout(this);
    column->addWidget(m_search);
    column->addWidget(m_list);
    column->addWidget(buttons);

    m_search->installEventFilter(this);
    connect(m_search, &QLineEdit::textChanged, this, &ApplicationPanel::search);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &ApplicationPanel::noteSelection);
    connect(m_list, &QListView::doubleClicked, this, &ApplicationPanel::accept);
    connect(buttons, &QDialogButtonBox::accepted, this, &ApplicationPanel::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &ApplicationPanel::reject);
    connect(browseButton, &QPushButton::clicked, this, [this] { done(browse); });
    noteSelection();
}

QStringList ApplicationPanel::selection() const
{
    QStringList paths;
    for (const QModelIndex& index : m_list->selectionModel()->selectedRows()) {
        paths.append(index.data(pathRole).toString());
    }
    return paths;
}

bool ApplicationPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_search && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown) {
            return QCoreApplication::sendEvent(m_list, event);
        }
    }
    return QDialog::eventFilter(watched, event);
}

// What is looked for is the first one found, until the user moves on.
void ApplicationPanel::search(const QString& text)
{
    m_filter->setFilterFixedString(text);
    m_list->setCurrentIndex(m_filter->index(0, 0));
}

void ApplicationPanel::noteSelection()
{
    m_openButton->setEnabled(!selection().isEmpty());
    Q_EMIT selectionDidChange();
}
