#include "RemovalQuestion.h"

#include <Alert.h>
#include <Bundle.h>
#include <SharedNames.h>

using namespace Qt::StringLiterals;

bool RemovalQuestion::confirm(QWidget* parent, const QString& question)
{
    const Bundle bundle = Bundle::bundleWithIdentifier(paneBundleIdentifier);
    const QString message = question + bundle.localizedString(u"\nYou will not be able to undo this operation."_s);
    Alert::beep();
    return Alert::runAlertPanel(parent, bundle.localizedString(u"Confirm remove"_s), message,
               bundle.localizedString(u"Remove"_s), bundle.localizedString(u"Cancel"_s)) == Alert::defaultReturn;
}
