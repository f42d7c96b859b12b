// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <QVariant>

#include <vector>

class Pasteboard;
class QMenu;

/// Where a drop lands: on a row, or between it and the one above.
enum class DropOperation { On, Above };

/// What the models of the tables share: fixed columns, and rows that are counted when the table is reloaded and asked
/// for when they are drawn, only below the number last counted. Keeps no content.
class TableModel : public QAbstractTableModel
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(TableModel)

public:
    /// What the cells of a column are.
    enum class Kind {
        /// Text that only shows.
        Text,
        /// Text edited in place.
        EditableText,
        /// A picture that is no control.
        Image,
        /// A picture that is a button. A click selects the row and then sets the cell to an invalid value.
        Button,
        /// An arrow that opens the column's menu. A click selects the row first; the menu's own actions do the rest.
        Menu,
    };
    Q_ENUM(Kind)

    struct Column
    {
        /// What the controller's operations know the column by.
        QString identifier;
        /// The header's text, and the name that assistive programs hear. Over cells without text it is not drawn: it is
        /// the header's tool tip.
        QString title;
        Kind kind = Kind::Text;
        /// Of a text column, in pixels at 96 dpi; 0 takes the width that is left. The others are as narrow as a
        /// picture.
        int width = 0;
        /// A click on the header sorts by the column.
        bool sorts = false;
        /// The key that does with the command modifier what a click on the button does; shown in the tool tip.
        QString keyEquivalent = {};
        /// What cells of the kind Menu open; stays its owner's.
        QMenu* menu = nullptr;

        bool hasText() const { return kind == Kind::Text || kind == Kind::EditableText; }
    };

    /// The role of a cell's Kind. Of Qt's roles the foreground is given to cells that are to be drawn pale, whatever it
    /// is.
    static constexpr int kindRole = Qt::UserRole;

    TableModel(std::vector<Column> columns, QObject* parent);

    const Column& columnAt(int column) const { return m_columns.at(static_cast<size_t>(column)); }

    /// -1 when there is no such column.
    int columnWithIdentifier(const QString& identifier) const;

    /// The number of rows that there are now, which the model and its views do not know before setNumberOfRows().
    virtual int countRows() const = 0;
    /// Adds or takes rows at the end.
    void setNumberOfRows(int rows);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    bool canDropMimeData(
        const QMimeData* data, Qt::DropAction action, int row, int column, const QModelIndex& parent) const override;
    bool dropMimeData(
        const QMimeData* data, Qt::DropAction action, int row, int column, const QModelIndex& parent) override;

protected:
    /// What a cell shows: text, an icon, or nothing (an invalid value).
    virtual QVariant objectValue(const QString& column, int row) const = 0;
    /// The tool tip of a cell; empty for none. Also read out by assistive programs.
    virtual QString toolTip(const QString& column, int row) const = 0;
    /// What an assistive program says for a cell that shows only a picture; empty where the text says it all.
    virtual QString accessibleText(const QString& column, int row) const = 0;
    /// The user has edited a text, or clicked a button (@p value is then invalid). The rows may change meanwhile.
    virtual void setObjectValue(const QVariant& value, const QString& column, int row);
    /// A drag of these rows begins: puts what they are on @p pasteboard. False refuses the drag, as the default does.
    virtual bool writeRows(const QList<int>& rows, Pasteboard& pasteboard) const;
    /// What becomes of what is dragged when it is dropped on @p row or above it; the number of rows means below the
    /// last one. The default refuses with Qt::IgnoreAction.
    virtual Qt::DropAction validateDrop(const Pasteboard& dragged, int row, DropOperation operation) const;
    /// Takes the drop that was validated; false when it cannot.
    virtual bool acceptDrop(const Pasteboard& dragged, int row, DropOperation operation);

private:
    std::vector<Column> m_columns;
    int m_rows = 0;
};
