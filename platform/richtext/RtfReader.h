// SPDX-License-Identifier: MIT
#pragma once

#include "Rtf.h"
#include "RtfTables.h"
#include "RtfTokenizer.h"

#include <QHash>

#include <compare>
#include <map>
#include <vector>

namespace Rtf {

/// Reads RTF into attributed text; one object reads one text.
///
/// A run goes on over as many paragraphs as share their attributes, since each run that is inserted into a document
/// costs far more than the characters in it. Groups live on a stack of bounded depth; deeper ones are read
/// with the attributes of the deepest.
class Reader final
{
public:
    Reader(QByteArrayView bytes, const QList<TextAttachment>& attachments);

    ReadResult read();

private:
    /// The attributes of characters; colors and fonts by number.
    struct Character
    {
        int font = -1;
        int halfPoints = 24;
        int foreground = 0;
        int background = 0;
        int link = -1;
        /// As AttributedText tells it.
        int superscript = 0;
        bool bold = false;
        bool italic = false;
        bool underline = false;
        bool strike = false;

        // NOLINTNEXTLINE(modernize-use-nullptr): the check takes the generated comparison with 0 for a pointer's.
        auto operator<=>(const Character&) const = default;
    };

    /// Where text goes; each a bit, since a control word may have its effect in several.
    enum class Destination : unsigned {
        Body = 0x01,
        FontTable = 0x02,
        ColorTable = 0x04,
        ExpandedColorTable = 0x08,
        FieldInstruction = 0x10,
        AttachmentName = 0x20,
        Skipped = 0x40
    };

    struct State
    {
        Character character;
        Paragraph paragraph;
        Destination destination = Destination::Body;
        /// How many items after a `\u` stand for the same character.
        int fallbackCount = 1;
        int field = -1;

        template <class Value>
        Value& operator[](Value Character::*attribute)
        {
            return character.*attribute;
        }

        template <class Value>
        Value& operator[](Value Paragraph::*attribute)
        {
            return paragraph.*attribute;
        }
    };

    struct Field
    {
        QString instruction;
        QString url;
    };

    struct PendingAttachment
    {
        QString name;
        int width = 0;
        int height = 0;
        /// Its group has been read: the next character is the attachment.
        bool complete = false;
    };

    struct Words;

    void handle(Token token);
    void beginGroup();
    void endGroup();
    bool skipsFallback(Token& token);
    void handleWord(const Token& token);
    void handleSymbol(char symbol);
    void beginField();
    void beginFieldInstruction();
    void beginFieldResult();
    void beginAttachment();

    void appendBytes(QByteArrayView bytes);
    void appendCodePoint(int value);
    void appendUnit(char16_t unit);
    void append(QStringView text);
    void appendBody(QStringView text);
    bool isAtParagraphStart() const;
    void flushBytes();
    void endRun();
    bool takesAttachmentCharacter();
    void insertAttachment();
    TextAttachment attachmentNamed(const QString& name);

    const CodePage& codePage() const;
    int effectiveFont(const Character& character) const;
    /// The index of the attributes of @p character in a paragraph of m_paragraph.
    qsizetype styleOf(const Character& character);
    AttributedText::Attributes attributesOf(const Character& character) const;
    QColor color(int index) const;
    /// The color table that is being read.
    ColorTable& colorTable();

    Tokenizer m_tokenizer;
    QHash<QString, TextAttachment> m_attachments;
    ReadResult m_result;

    State m_state;
    std::vector<State> m_stack;
    qsizetype m_tooDeep = 0;
    bool m_starred = false;
    bool m_finished = false;
    int m_fallbackLeft = 0;

    const CodePage* m_documentCodePage = &CodePage::numbered(1252);
    int m_defaultFont = 0;
    FontTable m_fonts;
    ColorTable m_colors;
    ColorTable m_expandedColors;
    std::vector<Field> m_fields;
    QTextOption::TabType m_tabType = QTextOption::LeftTab;
    PendingAttachment m_attachment;

    /// Bytes of a multi-byte character set that still have to be decoded together.
    QByteArray m_bytes;
    char16_t m_highSurrogate = 0;
    /// Where the run begins that has not ended yet, with the attributes m_runCharacter in paragraphs like m_paragraph.
    qsizetype m_runStart = 0;
    Character m_runCharacter;
    Paragraph m_paragraph;
    /// The latest style of each combination of attributes.
    std::map<Character, qsizetype> m_styles;
};

} // namespace Rtf
