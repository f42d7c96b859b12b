// SPDX-License-Identifier: MIT
#include "PointerSource.h"

#include <platform/input/InputWatcher.h>

#include <QGuiApplication>
#include <QStyleHints>

PointerSource::PointerSource(InputWatcher& input, QObject* parent)
    : EventSource(parent)
    , m_input(input)
{
}

void PointerSource::start()
{
    connect(&m_input, &InputWatcher::buttonPressed, this, &PointerSource::takeButton);
    connect(&m_input, &InputWatcher::wheelTurned, this, &PointerSource::takeWheel);
    connect(&m_input, &InputWatcher::pointerDragged, this, [this] { tell(EventCode::MouseDragged); });
}

void PointerSource::takeButton(const ButtonPress& press)
{
    if (press.button == ButtonPress::Button::Right) {
        tell(EventCode::RightButtonClicked);
    }
    if (press.button != ButtonPress::Button::Left) {
        m_lastClick.reset();
        return;
    }
    const auto interval = InputTime(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    if (m_lastClick && press.time - *m_lastClick < interval) {
        m_lastClick.reset();
        tell(EventCode::MouseDoubleClicked);
    } else {
        m_lastClick = press.time;
        tell(EventCode::MouseClicked);
    }
}

void PointerSource::takeWheel(const WheelTurn& turn)
{
    if (turn.direction == WheelTurn::Direction::Up) {
        tell(EventCode::ScrolledUp);
    } else if (turn.direction == WheelTurn::Direction::Down) {
        tell(EventCode::ScrolledDown);
    }
}
