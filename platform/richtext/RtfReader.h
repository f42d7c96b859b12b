#pragma once

#include "RtfParagraph.h"
#include "RtfTables.h"
#include "RtfTokenizer.h"
#include "TextAttachment.h"

#include <QHash>
#include <QStringList>
#include <QTextCursor>

#include <compare>
#include <map>
#include <vector>

namespace Rtf {

/// Fills a text document from RTF; one object reads one text.
///
/// Text is gathered over as many paragraphs as share their attributes and inserted at once, since each insertion into a
/// document costs far more than the characters in it. Groups live on a stack of bounded depth; deeper ones are read
/// with the attributes of the deepest.
class Reader final
{
public:
    Reader(QByteArrayView bytes, const QList<TextAttachment>& attachments, QTextDocument& document);

    /// Reads everything and answers what was odd.
    QStringList read();

private:
    /// The attributes of characters; colors and fonts by number.
    struct Character
    {
        int font = -1;
        int halfPoints = 24;
        int foreground = 0;
        int background = 0;
        int link = -1;
        QTextCharFormat::VerticalAlignment baseline = QTextCharFormat::AlignNormal;
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
    void flushRun();
    bool takesAttachmentCharacter();
    void insertAttachment();
    TextAttachment attachmentNamed(const QString& name);

    const CodePage& codePage() const;
    int effectiveFont(const Character& character) const;
    const QTextCharFormat& formatOf(const Character& character);
    QTextCharFormat makeFormat(const Character& character) const;
    QColor color(int index) const;
    /// The color table that is being read.
    ColorTable& colorTable();

    Tokenizer m_tokenizer;
    QTextDocument& m_document;
    QTextCursor m_cursor;
    QHash<QString, TextAttachment> m_attachments;
    QStringList m_warnings;

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
    /// Text not yet in the document, all of it with the attributes m_runCharacter and in paragraphs like
    /// m_blockParagraph.
    QString m_run;
    Character m_runCharacter;
    Paragraph m_blockParagraph;
    std::map<Character, QTextCharFormat> m_formats;
};

} // namespace Rtf
