// SPDX-License-Identifier: MIT
#include "SoundPanelAccessory.h"

SoundPanelAccessory::SoundPanelAccessory(QWidget* parent)
    : QWidget(parent)
{
    m_form.setupUi(this);
}
