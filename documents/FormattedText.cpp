// SPDX-License-Identifier: MIT
#include "FormattedText.h"

#include <platform/archive/ArchivedText.h>
#include <platform/richtext/Rtf.h>
#include <platform/richtext/Rtfd.h>

#include <QTextDocument>

#include <algorithm>

using namespace Qt::StringLiterals;

using Importers::Formatting;

namespace {

// What this reader has a complaint about may be whole for another program, and is all that there is of the text.
Formatting unchangedRtfd(const QByteArray& rtfd)
{
    return {rtfd, FormattedText::isWholeRtfd(rtfd) ? QStringList()
                                                   : QStringList(u"formatted text looks damaged, kept as it is"_s)};
}

QByteArray rtfdOf(const AttributedText& text)
{
    QTextDocument document;
    text.fill(document);
    return Rtfd::write(document);
}

Formatting rtfdOfAttributedString(const QByteArray& archive)
{
    const Result<ArchivedText> result = unarchivedText(archive);
    return result ? Formatting{rtfdOf(result->text), result->warnings} : Formatting();
}

Formatting rtfdOfImage(const QByteArray& archive)
{
    const std::optional<QByteArray> picture = unarchivedImageFile(archive);
    if (!picture || TextAttachment::picture(*picture).isNull()) {
        return {};
    }
    AttributedText::Attributes image;
    image.attachment = TextAttachment{u"my_image.tif"_s, *picture, false};
    return {rtfdOf({QString(QChar::ObjectReplacementCharacter), {image}, {{1, 0}}}), {}};
}

} // namespace

bool FormattedText::isWholeRtfd(const QByteArray& rtfd)
{
    if (Rtf::isRtf(rtfd)) {
        return true;
    }
    const Rtfd::Contents contents = Rtfd::readWrapper(rtfd);
    const bool hasText =
        std::ranges::any_of(contents.files, [](const TextAttachment& file) { return Rtf::isRtf(file.contents); });
    return hasText && contents.warnings.isEmpty();
}

Importers::Converters FormattedText::converters()
{
    return {unchangedRtfd, rtfdOfAttributedString, rtfdOfImage};
}
