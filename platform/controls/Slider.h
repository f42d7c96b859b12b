// SPDX-License-Identifier: MIT
#pragma once

#include <QSlider>

/// A slider with a floating-point value from 0 to 1.
///
/// A press beside the knob moves it there and drags it on.
/// A value set by code is kept exactly, although the knob stands on one of a thousand steps, until the user moves it.
class Slider : public QSlider
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Slider)

public:
    explicit Slider(QWidget* parent = nullptr);

    float floatValue() const;
    /// Held to 0 … 1; not a number counts as 0. Sends no action.
    void setFloatValue(float value);
    /// The value in the shortest decimal form that reads back as the same number, for instance "0.5" or "1".
    QString stringValue() const;

Q_SIGNALS:
    /// The user has moved the knob, at each step while dragging.
    void acted(Slider* sender);

private:
    float m_value = 0;
};
