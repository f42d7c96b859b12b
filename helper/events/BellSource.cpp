// SPDX-License-Identifier: MIT
#include "BellSource.h"

void BellSource::start()
{
    m_bell = ServerBell::ofSession();
    if (m_bell) {
        connect(m_bell.get(), &ServerBell::rung, this, [this] { tell(EventCode::SystemAlert); });
    }
}
