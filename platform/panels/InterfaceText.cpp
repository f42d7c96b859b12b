// SPDX-License-Identifier: MIT
#include "InterfaceText.h"

#include "PanelText.h"

QString localizedText(const char* text, const char* /*disambiguation*/)
{
    return panelText(QString::fromUtf8(text));
}
