// SPDX-License-Identifier: MIT
#pragma once

#include "Rtf.h"
#include "RtfParagraph.h"

#include <QColor>
#include <QTextBlock>
#include <QTextCharFormat>

#include <vector>

namespace Rtf {

/// Turns a text document into RTF in the platform's own layout; one object writes one text.
class Writer final
{
public:
    explicit Writer(const QTextDocument& document);

    Written write();

private:
    /// The attributes of characters as the text states them; fonts and colors by number, color 0 being the default.
    struct Character
    {
        qsizetype font = -1;
        int halfPoints = -1;
        qsizetype foreground = 0;
        qsizetype background = 0;
        QTextCharFormat::VerticalAlignment baseline = QTextCharFormat::AlignNormal;
        bool bold = false;
        bool italic = false;
        bool underline = false;
        bool strike = false;
    };

    void writeBlock(const QTextBlock& block);
    void writeFragment(const QTextFragment& fragment);
    void writeAttributes(const Character& wanted);
    void writeTextWithAttachments(QStringView text, const QTextImageFormat& format);
    void writeAttachment(const QTextImageFormat& format);
    void writeText(QStringView text);
    void writeUnit(char16_t unit);
    TextAttachment attachmentFor(const QTextImageFormat& format);

    Character characterOf(const QTextCharFormat& format);
    qsizetype fontNumber(const QString& family);
    qsizetype colorNumber(const QTextFormat& format, QTextFormat::Property property);
    QByteArray header() const;

    const QTextDocument& m_document;
    QByteArray m_body;
    QList<QString> m_families;
    QList<QColor> m_colors;
    QList<TextAttachment> m_attachments;
    Character m_character;
    Paragraph m_paragraph;
};

} // namespace Rtf
