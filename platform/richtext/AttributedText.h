// SPDX-License-Identifier: MIT
#pragma once

#include "RtfParagraph.h"
#include "TextAttachment.h"

#include <QColor>
#include <QList>
#include <QSizeF>
#include <QString>

#include <optional>

/// Formatted text as plain values, independent of any document class: what every format of formatted text is read into.
struct AttributedText
{
    /// How a stretch of text looks. What was not set has its initial value.
    struct Attributes
    {
        /// The family; empty for the default font.
        QString fontFamily;
        /// In points; 0 for the default size.
        double fontSize = 0;
        bool isBold = false;
        bool isItalic = false;
        bool isUnderlined = false;
        bool isStruckOut = false;
        /// Above 0 raised, below 0 lowered.
        int superscript = 0;
        /// Invalid for the default colors.
        QColor color;
        QColor backgroundColor;
        /// A URL; empty for none.
        QString link;
        /// Those of the paragraph in which the text starts, and of all that start in it.
        Rtf::Paragraph paragraph;
        /// The file that each character, always U+FFFC, stands for. Its name need be neither safe nor unique.
        std::optional<TextAttachment> attachment;
        /// In pixels; empty for a picture's own size.
        QSizeF pictureSize;

        bool operator==(const Attributes&) const = default;
    };

    struct Run
    {
        /// In UTF-16 units; 0 only for the last run, whose attributes are those of an empty last paragraph.
        qsizetype length = 0;
        /// The index of the attributes.
        qsizetype style = 0;
    };

    QString text;
    /// The attributes of runs, each written once for all runs that share them.
    QList<Attributes> styles;
    /// In text order, without gaps: their lengths sum to the length of the text.
    QList<Run> runs;

    /// Replaces the content of @p document, attachments included. States only what is set, so that the rest stays the
    /// document's own. Files of one name with different contents get numbered names; what the text shows twice is
    /// stored once, or a small archive could fill the disk.
    void fill(QTextDocument& document) const;
};
