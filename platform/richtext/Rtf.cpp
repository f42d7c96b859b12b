#include "Rtf.h"

#include "RtfReader.h"
#include "RtfWriter.h"

#include <QTextCursor>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace Rtf {

bool isRtf(QByteArrayView bytes)
{
    return bytes.startsWith("{\\rtf");
}

QStringList read(QByteArrayView bytes, const QList<TextAttachment>& attachments, QTextDocument& document)
{
    const bool undo = document.isUndoRedoEnabled();
    document.setUndoRedoEnabled(false);
    // One edit for the whole text: a view then lays out what can be seen, and the rest when there is time.
    QTextCursor edit(&document);
    edit.beginEditBlock();
    document.clear();
    TextAttachment::removeAllFrom(document);
    QStringList warnings{u"this is no rich text"_s};
    if (isRtf(bytes)) {
        warnings = Reader(bytes, attachments, document).read();
    }
    edit.endEditBlock();
    document.setUndoRedoEnabled(undo);
    return warnings;
}

Written write(const QTextDocument& document)
{
    return Writer(document).write();
}

} // namespace Rtf
