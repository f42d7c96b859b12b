// SPDX-License-Identifier: MIT
#include "Rtf.h"

#include "RtfReader.h"
#include "RtfWriter.h"

using namespace Qt::StringLiterals;

namespace Rtf {

bool isRtf(QByteArrayView bytes)
{
    return bytes.startsWith("{\\rtf");
}

ReadResult read(QByteArrayView bytes, const QList<TextAttachment>& attachments)
{
    return isRtf(bytes) ? Reader(bytes, attachments).read() : ReadResult{{}, {u"this is no rich text"_s}};
}

Written write(const QTextDocument& document)
{
    return Writer(document).write();
}

} // namespace Rtf
