// SPDX-License-Identifier: MIT
#include "PullDownButton.h"

#include <QKeyEvent>
#include <QStyle>
#include <QStyleOptionButton>

PullDownButton::PullDownButton(QWidget* parent)
    : QPushButton(parent)
    , m_menu(new QMenu(this))
{
    m_menu->addAction(QString());
    connect(this, &QPushButton::pressed, this, &PullDownButton::dropDown);
}

QSize PullDownButton::sizeHint() const
{
    // The base class leaves room for the arrow only where it owns the menu.
    const int arrowWidth = style()->pixelMetric(QStyle::PM_MenuButtonIndicator, nullptr, this);
    return QPushButton::sizeHint() + QSize(arrowWidth, 0);
}

void PullDownButton::initStyleOption(QStyleOptionButton* option) const
{
    QPushButton::initStyleOption(option);
    option->features |= QStyleOptionButton::HasMenu;
}

void PullDownButton::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Down || event->key() == Qt::Key_F4) {
        dropDown();
        return;
    }
    QPushButton::keyPressEvent(event);
}

void PullDownButton::dropDown()
{
    if (QMenu* const shown = m_menu->actions().constFirst()->menu(); shown != nullptr) {
        shown->exec(mapToGlobal(QPoint(0, height())));
        setDown(false);
    }
}
