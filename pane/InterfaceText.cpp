#include "InterfaceText.h"

#include <Bundle.h>
#include <SharedNames.h>

QString localizedText(const char* text, const char* /*disambiguation*/)
{
    return Bundle::bundleWithIdentifier(paneBundleIdentifier).localizedString(QString::fromUtf8(text));
}
