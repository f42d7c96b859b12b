// SPDX-License-Identifier: MIT
#include "TableView.h"

#include "RowSelectionModel.h"

#include <QKeyEvent>

#include <utility>

namespace {

/// Control alone plays the command key; with Alt it makes the characters of the third level.
bool isCommandKey(const QKeyEvent& event)
{
    return (event.modifiers() & Qt::ControlModifier) && !(event.modifiers() & Qt::AltModifier) &&
           event.key() != Qt::Key_Control;
}

bool activatesCell(const QKeyEvent& event)
{
    return event.key() == Qt::Key_Space || event.key() == Qt::Key_Return || event.key() == Qt::Key_Select;
}

} // namespace

bool TableView::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && hasFocus()) {
        auto* const keyEvent = static_cast<QKeyEvent*>(event);
        m_keyEquivalentPerformed = false;
        if (isCommandKey(*keyEvent) && performKeyEquivalent(keyEvent)) {
            // Claimed, so that no shortcut takes it; the key press that follows has been dealt with.
            m_keyEquivalentPerformed = true;
            event->accept();
            return true;
        }
    }
    return QTableView::event(event);
}

void TableView::keyPressEvent(QKeyEvent* event)
{
    if (!hasFocus()) {
        // Left over by the field editor.
        QTableView::keyPressEvent(event);
        return;
    }
    if (!isCommandKey(*event)) {
        keyDown(event);
        return;
    }
    if (std::exchange(m_keyEquivalentPerformed, false) || performKeyEquivalent(event)) {
        event->accept();
        return;
    }
    QTableView::keyPressEvent(event);
}

void TableView::inputMethodEvent(QInputMethodEvent* event)
{
    if (!hasFocus() || event->commitString().isEmpty()) {
        QTableView::inputMethodEvent(event);
        return;
    }
    QKeyEvent typed(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, event->commitString());
    keyDown(&typed);
}

QVariant TableView::inputMethodQuery(Qt::InputMethodQuery query) const
{
    return query == Qt::ImEnabled ? QVariant(true) : QTableView::inputMethodQuery(query);
}

void TableView::keyDown(QKeyEvent* event)
{
    const QModelIndex current = currentIndex();
    if (activatesCell(*event) && current.isValid() && !isEditing() && !m_model->columnAt(current.column()).hasText()) {
        event->accept();
        activateCell(current);
        return;
    }
    QTableView::keyPressEvent(event);
}

QModelIndex TableView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    return currentIndex().isValid() || !m_model ? QTableView::moveCursor(action, modifiers)
                                                : m_model->index(0, m_selection->column());
}

bool TableView::performKeyEquivalent(QKeyEvent* /*event*/)
{
    return false;
}

void TableView::keyboardSearch(const QString& /*search*/) {}
