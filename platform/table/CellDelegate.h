// SPDX-License-Identifier: MIT
#pragma once

#include <QPersistentModelIndex>
#include <QStyledItemDelegate>

class QLineEdit;

/// Draws a TableView's cells and makes the field in which a text cell is edited.
class CellDelegate final : public QStyledItemDelegate
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(CellDelegate)

public:
    /// The side of a cell's image, in device-independent pixels.
    static constexpr int imageSize = 16;

    explicit CellDelegate(QObject* parent);

    /// The button cell under the mouse pointer, drawn with feedback.
    QPersistentModelIndex hoveredCell() const { return m_hovered; }

    void setHoveredCell(const QModelIndex& index) { m_hovered = index; }

    /// The button cell that the mouse or the keyboard holds down.
    QPersistentModelIndex pressedCell() const { return m_pressed; }

    void setPressedCell(const QModelIndex& index) { m_pressed = index; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void updateEditorGeometry(
        QWidget* editor, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
        const QModelIndex& index) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void editorOpened(QLineEdit* editor, const QModelIndex& index) const;

private:
    void paintBackgroundAndText(QPainter* painter, QStyleOptionViewItem option) const;
    void paintFeedback(QPainter* painter, const QStyleOptionViewItem& option) const;

    QPersistentModelIndex m_hovered;
    QPersistentModelIndex m_pressed;
};
