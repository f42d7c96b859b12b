#include "PaneBundle.h"

using namespace Qt::StringLiterals;

Bundle paneBundle()
{
    return Bundle::bundleWithIdentifier(u"com.blipsy.prefpanel"_s);
}
