// SPDX-License-Identifier: MIT
#pragma once

#include "SoundSource.h"

#include <platform/bytes/Result.h>

#include <QByteArrayView>

#include <memory>

/// The samples of 'snd ' resources (see SoundResource).
namespace SoundResourceSource {

using Opened = Result<std::unique_ptr<SoundSource>>;

/// Decodes the resource @p bytes, which are not needed afterwards; more than two channels are mixed down. Null for one
/// that plays nothing at all.
Opened open(QByteArrayView bytes);

} // namespace SoundResourceSource
