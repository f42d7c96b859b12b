// SPDX-License-Identifier: MIT
#pragma once

#include "AliasTarget.h"

#include <QByteArrayView>

#include <optional>

/// The classic alias record, the contents of an 'alis' resource, versions 2 and 3. The format was never published by
/// its maker; it is known from genuine records and independent descriptions. Big-endian: a fixed header, then tagged
/// items.
namespace AliasRecord {

/// Reads a record. Nothing when it is neither version, shorter than its header, or leads outside its volume with
/// a ".."; a record that is cut off gives what comes before the cut.
std::optional<AliasTarget> parse(QByteArrayView bytes);

} // namespace AliasRecord
