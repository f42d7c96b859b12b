// SPDX-License-Identifier: MIT
#include "Stepper.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QStyleOptionSpinBox>

Stepper::Stepper(QWidget* parent)
    : QSpinBox(parent)
{
    lineEdit()->hide();
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

Stepper::~Stepper() = default;

QSize Stepper::sizeHint() const
{
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    option.rect = QRect({}, QSpinBox::sizeHint());
    const QRect up = style()->subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxUp, this);
    const QRect down = style()->subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxDown, this);
    const QRect arrows = up.united(down);
    // As much frame on the left as on the right: more would show a piece of the hidden field.
    const int frame = option.rect.right() - arrows.right();
    return {arrows.width() + 2 * frame, option.rect.height()};
}

QSize Stepper::minimumSizeHint() const
{
    return sizeHint();
}

void Stepper::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        QSpinBox::keyPressEvent(event);
        return;
    default:
        // There is no field here to type into.
        event->ignore();
    }
}
