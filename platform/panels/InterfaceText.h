// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The text of the interface files in the user's language, looked up in the pane's strings table. @p text is UTF-8; the
/// disambiguation that the interface compiler may pass is not used.
QString localizedText(const char* text, const char* disambiguation = nullptr);
