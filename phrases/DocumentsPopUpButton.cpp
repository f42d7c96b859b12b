// SPDX-License-Identifier: MIT
#include "DocumentsPopUpButton.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QKeyEvent>

DocumentsPopUpButton::DocumentsPopUpButton(QWidget* parent)
    : QComboBox(parent)
{
}

void DocumentsPopUpButton::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
        showPopup();
        return;
    default:
        break;
    }
    const QString text = event->text();
    // The space bar opens the list by itself.
    if (text.isEmpty() || text.front().isSpace() || !text.front().isPrint()) {
        QComboBox::keyPressEvent(event);
        return;
    }
    if ((event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0) {
        event->ignore();
        return;
    }
    showPopup();
    QCoreApplication::sendEvent(view(), event);
}

void DocumentsPopUpButton::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}
