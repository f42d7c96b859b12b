// SPDX-License-Identifier: MIT
#include "Cell.h"

void ButtonCell::performClick(TableView* sender) const
{
    if (m_action) {
        m_action(sender);
    }
}
