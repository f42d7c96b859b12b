// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// What a control's text reads on the screen: the "&" that marks its mnemonic is left out, "&&" is "&".
QString titleWithoutMnemonic(const QString& text);

/// @p title as a control's text that reads exactly like it.
QString textForTitle(QString title);
