// SPDX-License-Identifier: MIT
#include "PanelText.h"

#include <platform/desktop/Bundle.h>
#include <product/Product.h>

QString panelText(const QString& text)
{
    return Bundle::bundleWithIdentifier(QStringLiteral(PRODUCT_BUNDLE_IDENTIFIER)).localizedString(text);
}
