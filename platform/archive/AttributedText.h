#pragma once

#include <platform/richtext/TextAttachment.h>

#include <QByteArray>
#include <QByteArrayView>
#include <QColor>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

/// Formatted text as plain values: what an archived attributed string comes to, independent of any document class.
struct AttributedText
{
    enum class Alignment { Natural, Left, Right, Center, Justified };

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
        Alignment alignment = Alignment::Natural;
        /// A URL; empty for none.
        QString link;
        /// The file that the run's one character (U+FFFC) stands for. The name is empty where none was stored.
        std::optional<TextAttachment> attachment;

        bool operator==(const Attributes&) const = default;
    };

    struct Run
    {
        /// In UTF-16 units, at least 1.
        qsizetype length = 0;
        Attributes attributes;
    };

    QString text;
    /// In text order, without gaps: their lengths sum to the length of the text.
    QList<Run> runs;

    struct ReadResult;

    /// The attributed string that the non-keyed archive @p bytes has as its root. An archive whose text or runs are
    /// damaged is refused; a font or file that cannot be read is left out.
    static ReadResult unarchived(QByteArrayView bytes);
};

/// No text and the reason, or the text; warnings tell what was left out, each kind once and in the same words for every
/// archive.
struct AttributedText::ReadResult
{
    std::optional<AttributedText> text;
    QString error;
    QStringList warnings;
};

/// The TIFF file inside the archived image @p bytes: that of its first bitmap representation. Nothing where the
/// archive is damaged, or holds no bitmap that begins as a TIFF file.
std::optional<QByteArray> unarchivedImageFile(QByteArrayView bytes);
