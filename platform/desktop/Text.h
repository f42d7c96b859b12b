// SPDX-License-Identifier: MIT
#pragma once

#include <product/Product.h>

#include <QCoreApplication>

/// The texts that the user sees.
namespace Text {

/// The text for @p key in the user's language, from the strings table of the product's bundle; @p key itself, UTF-8,
/// where there is no translation. The disambiguation that the interface compiler passes is not used.
inline QString tr(const char* key, const char* /*disambiguation*/ = nullptr)
{
    return QCoreApplication::translate(PRODUCT_BUNDLE_IDENTIFIER, key);
}

} // namespace Text
