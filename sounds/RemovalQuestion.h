// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QWidget;

/// The question that both tables ask before something is removed for good.
namespace RemovalQuestion {

/// Beeps and asks @p question (already in the user's language) in a modal alert over @p parent. True when the user
/// confirms. Does not look at gConfirmRemove: whether to ask is the caller's decision.
bool confirm(QWidget* parent, const QString& question);

} // namespace RemovalQuestion
