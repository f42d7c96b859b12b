// SPDX-License-Identifier: MIT
#pragma once

/// Tells a drag from a click: motion while the first button is held. Of raw motion only the number of reports means the
/// same for every kind of pointer, and a hand that clicks moves a little, too.
class DragDetector final
{
public:
    /// Motion is to be told from now on.
    void press() { m_left = reportsOfADrag; }

    void release() { m_left = 0; }

    bool isWatching() const { return m_left > 0; }

    /// Takes a report of motion. Whether a drag begins with it; then no more of them are needed.
    bool move() { return m_left > 0 && --m_left == 0; }

private:
    static constexpr int reportsOfADrag = 4;

    int m_left = 0;
};
