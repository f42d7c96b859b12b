// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>
#include <QPushButton>

class QStyleOptionButton;

/// A button that drops down a menu. The first item of menu() stands for the button itself: the menu that drops down is
/// that item's submenu (nothing while it has none).
class PullDownButton final : public QPushButton
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PullDownButton)

public:
    explicit PullDownButton(QWidget* parent = nullptr);

    QMenu* menu() const { return m_menu; }

    QSize sizeHint() const override;

    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void initStyleOption(QStyleOptionButton* option) const override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void dropDown();

    QMenu* m_menu;
};
