// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// A text of the panels in the user's language; @p text is the English one. The pane's strings table holds them.
QString panelText(const QString& text);
