#include "PanelText.h"

#include <platform/desktop/Bundle.h>

using namespace Qt::StringLiterals;

QString panelText(const QString& text)
{
    return Bundle::bundleWithIdentifier(u"com.blipsy.prefpanel"_s).localizedString(text);
}
