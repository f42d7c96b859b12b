// SPDX-License-Identifier: MIT
#include "WheelGuard.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>
#include <QSlider>

WheelGuard::WheelGuard(QWidget* page)
    : QObject(page)
{
    for (QWidget* const control : page->findChildren<QWidget*>()) {
        const bool heedsWheel = qobject_cast<QComboBox*>(control) || qobject_cast<QAbstractSpinBox*>(control) ||
                                qobject_cast<QSlider*>(control);
        if (!heedsWheel) {
            continue;
        }
        control->installEventFilter(this);
        if (control->focusPolicy() == Qt::WheelFocus) {
            control->setFocusPolicy(Qt::StrongFocus);
        }
    }
}

bool WheelGuard::eventFilter(QObject* watched, QEvent* event)
{
    const auto* const control = qobject_cast<const QWidget*>(watched);
    if (event->type() != QEvent::Wheel || !control || control->hasFocus()) {
        return QObject::eventFilter(watched, event);
    }
    // Not accepted, so that it goes on to the parent, the scroll area at last.
    event->ignore();
    return true;
}
