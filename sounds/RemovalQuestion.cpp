// SPDX-License-Identifier: MIT
#include "RemovalQuestion.h"

#include <platform/desktop/Text.h>
#include <platform/panels/Alert.h>

bool RemovalQuestion::confirm(QWidget* parent, const QString& question)
{
    Alert::beep();
    return Alert::runAlertPanel(parent, Text::tr("Confirm remove"), question, Text::tr("Remove"), Text::tr("Cancel")) ==
           Alert::defaultReturn;
}
