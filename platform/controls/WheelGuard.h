// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QWidget;

/// Keeps the wheel from changing values by accident while a page is scrolled.
///
/// Combo boxes, spin boxes and sliders on the page heed the wheel only while they have the keyboard focus, and no
/// longer take the focus by the wheel; the event goes on to whatever scrolls the page.
class WheelGuard final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(WheelGuard)

public:
    /// Guards every such control that is on @p page now. The page owns the guard.
    explicit WheelGuard(QWidget* page);

    bool eventFilter(QObject* watched, QEvent* event) override;
};
