// SPDX-License-Identifier: MIT
#pragma once

#include <QSpinBox>

/// The arrows of a spin box alone, for a number that is shown in a field of its own. The arrow keys and Page Up and
/// Page Down step too. Everything else (bounds, step, value, signals, the accessible value) is the spin box's.
class Stepper final : public QSpinBox
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Stepper)

public:
    explicit Stepper(QWidget* parent = nullptr);
    ~Stepper() override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
