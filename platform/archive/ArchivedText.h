// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/Result.h>
#include <platform/richtext/AttributedText.h>

#include <QByteArrayView>
#include <QStringList>

/// What an archive is read into; warnings tell what was left out, each kind once and in the same words for every
/// archive.
struct ArchivedText
{
    AttributedText text;
    QStringList warnings;
};

/// The attributed string that the non-keyed archive @p bytes has as its root. An archive whose text or runs are damaged
/// is refused; a font or file that cannot be read is left out.
Result<ArchivedText> unarchivedText(QByteArrayView bytes);

/// The TIFF file inside the archived image @p bytes: that of its first bitmap representation. Nothing where the
/// archive is damaged, or holds no bitmap that begins as a TIFF file.
std::optional<QByteArray> unarchivedImageFile(QByteArrayView bytes);
