// SPDX-License-Identifier: MIT
#include "PaneBundle.h"

#include <product/Product.h>

Bundle paneBundle()
{
    return Bundle::bundleWithIdentifier(QStringLiteral(PRODUCT_BUNDLE_IDENTIFIER));
}
