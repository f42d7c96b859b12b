// SPDX-License-Identifier: MIT
#include "RemovalQuestion.h"

#include <core/SharedNames.h>
#include <platform/desktop/Bundle.h>
#include <platform/panels/Alert.h>

using namespace Qt::StringLiterals;

bool RemovalQuestion::confirm(QWidget* parent, const QString& question)
{
    const Bundle bundle = Bundle::bundleWithIdentifier(paneBundleIdentifier);
    Alert::beep();
    return Alert::runAlertPanel(parent, bundle.localizedString(u"Confirm remove"_s), question,
               bundle.localizedString(u"Remove"_s), bundle.localizedString(u"Cancel"_s)) == Alert::defaultReturn;
}
