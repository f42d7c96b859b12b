// SPDX-License-Identifier: MIT
#include "CellDelegate.h"

#include "TableModel.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QToolTip>

namespace {

constexpr int feedbackMargin = 3;

QStyle* styleOf(const QStyleOptionViewItem& option)
{
    return option.widget ? option.widget->style() : QApplication::style();
}

QRect imageRect(const QRect& cell)
{
    QRect rect(0, 0, CellDelegate::imageSize, CellDelegate::imageSize);
    rect.moveCenter(cell.center());
    return rect;
}

QPalette::ColorGroup colorGroup(const QStyleOptionViewItem& option)
{
    if (!(option.state & QStyle::State_Enabled)) {
        return QPalette::Disabled;
    }
    return option.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
}

QColor textColor(const QStyleOptionViewItem& option)
{
    const auto role = option.state & QStyle::State_Selected ? QPalette::HighlightedText : QPalette::Text;
    return option.palette.color(colorGroup(option), role);
}

QIcon::Mode iconMode(const QStyleOptionViewItem& option, const QIcon& icon)
{
    if (!(option.state & QStyle::State_Enabled)) {
        return QIcon::Disabled;
    }
    // A picture in colours stays as it is in a selected row; Qt would veil it.
    return icon.isMask() && (option.state & QStyle::State_Selected) ? QIcon::Selected : QIcon::Normal;
}

void paintImage(QPainter* painter, const QStyleOptionViewItem& option)
{
    const auto icon = option.index.data(Qt::DecorationRole).value<QIcon>();
    if (!icon.isNull()) {
        icon.paint(painter, imageRect(option.rect), Qt::AlignCenter, iconMode(option, icon));
    }
}

void paintMenuArrow(QPainter* painter, const QStyleOptionViewItem& option)
{
    QStyleOptionViewItem arrow(option);
    arrow.palette.setColor(QPalette::ButtonText, textColor(option));
    arrow.palette.setColor(QPalette::WindowText, textColor(option));
    arrow.rect = imageRect(option.rect).adjusted(4, 4, -4, -4);
    styleOf(option)->drawPrimitive(QStyle::PE_IndicatorArrowDown, &arrow, painter, option.widget);
}

} // namespace

CellDelegate::CellDelegate(QObject* parent)
    : QStyledItemDelegate(parent)
{
}

void CellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem cell(option);
    cell.index = index;
    // The row is the unit of selection; hovering is shown on the cells that react to the mouse.
    cell.state.setFlag(QStyle::State_MouseOver, false);
    painter->save();
    paintBackgroundAndText(painter, cell);
    switch (index.data(TableModel::kindRole).value<TableModel::Kind>()) {
    case TableModel::Kind::Text:
    case TableModel::Kind::EditableText:
        break;
    case TableModel::Kind::Button:
        paintFeedback(painter, cell);
        [[fallthrough]];
    case TableModel::Kind::Image:
        paintImage(painter, cell);
        break;
    case TableModel::Kind::Menu:
        paintFeedback(painter, cell);
        paintMenuArrow(painter, cell);
        break;
    }
    painter->restore();
}

QSize CellDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const
{
    return {imageSize + 2 * feedbackMargin, option.fontMetrics.height() + 2 * feedbackMargin};
}

void CellDelegate::paintBackgroundAndText(QPainter* painter, QStyleOptionViewItem option) const
{
    option.text = option.index.data(Qt::DisplayRole).toString();
    option.features.setFlag(QStyleOptionViewItem::HasDisplay, !option.text.isEmpty());
    option.displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
    option.textElideMode = Qt::ElideMiddle;
    if (option.index.data(Qt::ForegroundRole).isValid()) {
        QColor pale = textColor(option);
        pale.setAlphaF(pale.alphaF() * 0.5F);
        option.palette.setColor(QPalette::Text, pale);
        option.palette.setColor(QPalette::HighlightedText, pale);
    }
    styleOf(option)->drawControl(QStyle::CE_ItemViewItem, &option, painter, option.widget);
}

void CellDelegate::paintFeedback(QPainter* painter, const QStyleOptionViewItem& option) const
{
    const bool isPressed = option.index == m_pressed;
    if (!isPressed && option.index != m_hovered) {
        return;
    }
    QColor veil = textColor(option);
    veil.setAlphaF(isPressed ? 0.30F : 0.14F);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(veil);
    const QRect frame =
        imageRect(option.rect).adjusted(-feedbackMargin, -feedbackMargin, feedbackMargin, feedbackMargin);
    painter->drawRoundedRect(frame & option.rect, 4, 4);
}

QWidget* CellDelegate::createEditor(
    QWidget* parent, const QStyleOptionViewItem& /*option*/, const QModelIndex& index) const
{
    auto* const editor = new QLineEdit(parent);
    editor->setObjectName(QStringLiteral("FieldEditor"));
    editor->setAutoFillBackground(true);
    editor->setAccessibleName(
        index.model()->headerData(index.column(), Qt::Horizontal, Qt::AccessibleTextRole).toString());
    editor->setText(index.data(Qt::EditRole).toString());
    Q_EMIT editorOpened(editor, index);
    return editor;
}

void CellDelegate::setEditorData(QWidget* /*editor*/, const QModelIndex& /*index*/) const
{
    // The text was set when the editor was made: a later change of the cell must not replace what the user has typed.
}

void CellDelegate::updateEditorGeometry(
    QWidget* editor, const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const
{
    editor->setGeometry(option.rect);
}

bool CellDelegate::helpEvent(
    QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip || !index.isValid() || !index.data(Qt::ToolTipRole).toString().isEmpty()) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    // A text too long for its column can be read whole in the tool tip.
    const QString text = index.data(Qt::DisplayRole).toString();
    const bool isElided =
        option.fontMetrics.horizontalAdvance(text) + 2 * feedbackMargin > view->visualRect(index).width();
    QToolTip::showText(event->globalPos(), isElided ? text : QString(), view);
    return true;
}

bool CellDelegate::eventFilter(QObject* watched, QEvent* event)
{
    auto* const editor = qobject_cast<QWidget*>(watched);
    if (!editor || event->type() != QEvent::KeyPress) {
        return QStyledItemDelegate::eventFilter(watched, event);
    }
    // Qt commits on Return only when control is back in the event loop; the order of what follows an edit is fixed
    // here.
    switch (static_cast<const QKeyEvent*>(event)->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        Q_EMIT commitData(editor);
        Q_EMIT closeEditor(editor, SubmitModelCache);
        return true;
    default:
        return QStyledItemDelegate::eventFilter(watched, event);
    }
}
