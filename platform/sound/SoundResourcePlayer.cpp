// SPDX-License-Identifier: MIT
#include "SoundResourcePlayer.h"

#include "SoundPlayback.h"
#include "SoundResourceSource.h"

#include <product/Product.h>

#include <QLoggingCategory>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, PRODUCT_NAME ".sound.resource", QtInfoMsg)

bool logFailure(const QString& reason)
{
    qCInfo(log).noquote() << u"Cannot play a sound resource: %1"_s.arg(reason);
    return false;
}

} // namespace

bool SoundResourcePlayer::playSynchronously(QByteArrayView bytes)
{
    const SoundResourceSource::Opened source = SoundResourceSource::open(bytes);
    if (!source) {
        return logFailure(source.error());
    }
    if (!*source) {
        return true;
    }
    SoundPlayback playback;
    const Result<SoundPlayback::End> end = playback.run(**source);
    return end ? *end != SoundPlayback::End::Unheard : logFailure(end.error());
}
