#include "RtfReader.h"

#include <QFont>

#include <algorithm>
#include <cstdlib>

namespace Rtf {

namespace {

// The largest length that the format's own editors offer: 22 inches.
constexpr int maximumTwips = 22 * 1440;
constexpr int maximumHalfPoints = 2 * 1638;
constexpr int defaultHalfPoints = 24;
constexpr int maximumFallback = 32;
constexpr int maximumTabs = 64;

int length(int twips)
{
    return std::clamp(twips, -maximumTwips, maximumTwips);
}

} // namespace

void Reader::handleWord(const Token& token)
{
    flushBytes();
    const auto [word, character] = meaningOf(token.text);
    if (handleDestinationWord(word)) {
        m_starred = false;
        return;
    }
    if (m_starred) {
        m_starred = false;
        m_state.destination = Destination::Skipped;
        return;
    }
    if (word == Word::NamedCharacter) {
        append(QStringView(&character, 1));
    } else if (word == Word::NewParagraph) {
        append(u"\n");
    } else if (!handleDocumentWord(token, word)) {
        switch (m_state.destination) {
        case Destination::Body:
            handleCharacterWord(token, word) || handleParagraphWord(token, word);
            break;
        default:
            handleTableWord(token);
            break;
        }
    }
}

void Reader::handleTableWord(const Token& token)
{
    switch (m_state.destination) {
    case Destination::FontTable:
        m_fonts.handleWord(token);
        break;
    case Destination::ColorTable:
        m_colors.handleWord(token);
        break;
    case Destination::ExpandedColorTable:
        m_expandedColors.handleWord(token);
        break;
    case Destination::AttachmentName:
        if (token.text == "width") {
            m_attachment.width = token.value;
        } else if (token.text == "height") {
            m_attachment.height = token.value;
        }
        break;
    default:
        break;
    }
}

bool Reader::handleDocumentWord(const Token& token, Word word)
{
    switch (word) {
    case Word::AnsiCodePage:
        m_documentCodePage = &CodePage::numbered(token.value);
        return true;
    case Word::Mac:
        m_documentCodePage = &CodePage::numbered(10000);
        return true;
    case Word::DefaultFont:
        m_defaultFont = token.value;
        return true;
    case Word::FallbackCount:
        m_state.fallbackCount = std::clamp(token.value, 0, maximumFallback);
        return true;
    case Word::Unicode:
        if (!takesAttachmentCharacter()) {
            appendCodePoint(token.value);
        }
        m_fallbackLeft = m_state.fallbackCount;
        return true;
    default:
        return false;
    }
}

bool Reader::handleCharacterWord(const Token& token, Word word)
{
    Character& character = m_state.character;
    switch (word) {
    case Word::Plain:
        character = {.link = character.link};
        return true;
    case Word::FontNumber:
        character.font = token.value;
        return true;
    case Word::FontSize:
        character.halfPoints = token.value > 0 ? std::min(token.value, maximumHalfPoints) : defaultHalfPoints;
        return true;
    case Word::Foreground:
        character.foreground = token.value;
        return true;
    case Word::Background:
        character.background = token.value;
        return true;
    case Word::Bold:
        character.bold = token.isOn();
        return true;
    case Word::Italic:
        character.italic = token.isOn();
        return true;
    case Word::Underline:
        character.underline = token.isOn();
        return true;
    case Word::NoUnderline:
        character.underline = false;
        return true;
    case Word::Strike:
        character.strike = token.isOn();
        return true;
    case Word::Superscript:
        character.baseline = token.isOn() ? QTextCharFormat::AlignSuperScript : QTextCharFormat::AlignNormal;
        return true;
    case Word::Subscript:
        character.baseline = token.isOn() ? QTextCharFormat::AlignSubScript : QTextCharFormat::AlignNormal;
        return true;
    case Word::NoBaseline:
        character.baseline = QTextCharFormat::AlignNormal;
        return true;
    default:
        return false;
    }
}

bool Reader::handleParagraphWord(const Token& token, Word word)
{
    Paragraph& paragraph = m_state.paragraph;
    switch (word) {
    case Word::ParagraphDefaults:
        paragraph = {};
        m_tabType = QTextOption::LeftTab;
        return true;
    case Word::AlignLeft:
        paragraph.side = Qt::AlignLeft;
        return true;
    case Word::AlignRight:
        paragraph.side = Qt::AlignRight;
        return true;
    case Word::AlignCenter:
        paragraph.side = Qt::AlignHCenter;
        return true;
    case Word::AlignJustify:
        paragraph.side = Qt::AlignJustify;
        return true;
    case Word::AlignNatural:
        paragraph.side = {};
        return true;
    case Word::LeftIndent:
        paragraph.leftIndent = length(token.value);
        return true;
    case Word::RightIndent:
        paragraph.rightIndent = length(token.value);
        return true;
    case Word::FirstIndent:
        paragraph.firstLineIndent = length(token.value);
        return true;
    case Word::SpaceBefore:
        paragraph.spaceBefore = length(token.value);
        return true;
    case Word::SpaceAfter:
        paragraph.spaceAfter = length(token.value);
        return true;
    default:
        return handleSpacingWord(token, word) || handleTabWord(token, word);
    }
}

bool Reader::handleSpacingWord(const Token& token, Word word)
{
    Paragraph& paragraph = m_state.paragraph;
    if (word == Word::LineHeight) {
        const int height = length(token.value);
        paragraph.lineHeight = std::abs(height);
        paragraph.spacing = height == 0  ? Paragraph::Spacing::Natural
                            : height > 0 ? Paragraph::Spacing::AtLeast
                                         : Paragraph::Spacing::Exact;
        return true;
    }
    if (word == Word::LineHeightIsMultiple) {
        if (token.value == 1 && paragraph.spacing == Paragraph::Spacing::AtLeast) {
            paragraph.spacing = Paragraph::Spacing::Proportional;
        }
        return true;
    }
    return false;
}

bool Reader::handleTabWord(const Token& token, Word word)
{
    switch (word) {
    case Word::TabRight:
        m_tabType = QTextOption::RightTab;
        return true;
    case Word::TabCenter:
        m_tabType = QTextOption::CenterTab;
        return true;
    case Word::TabDecimal:
        m_tabType = QTextOption::DelimiterTab;
        return true;
    case Word::Tab: {
        // The delimiter is that of the text's language, which RTF does not tell.
        const QChar delimiter = m_tabType == QTextOption::DelimiterTab ? u'.' : QChar();
        QTextOption::Tab tab(qreal(length(token.value)) / twipsPerPixel, m_tabType, delimiter);
        if (m_state.paragraph.tabs.size() < maximumTabs) {
            m_state.paragraph.tabs.append(tab);
        }
        m_tabType = QTextOption::LeftTab;
        return true;
    }
    default:
        return false;
    }
}

int Reader::effectiveFont(const Character& character) const
{
    return character.font >= 0 ? character.font : m_defaultFont;
}

const CodePage& Reader::codePage() const
{
    return m_fonts.codePageOf(effectiveFont(m_state.character), *m_documentCodePage);
}

QColor Reader::color(int index) const
{
    if (m_expandedColors.isThemeColor(index)) {
        return {};
    }
    const QColor refined = m_expandedColors.color(index);
    return refined.isValid() ? refined : m_colors.color(index);
}

const QTextCharFormat& Reader::formatOf(const Character& character)
{
    const auto [position, isNew] = m_formats.try_emplace(character);
    if (isNew) {
        position->second = makeFormat(character);
    }
    return position->second;
}

QTextCharFormat Reader::makeFormat(const Character& character) const
{
    static const Font noFont;
    const Font* const named = m_fonts.font(effectiveFont(character));
    const Font& font = named == nullptr ? noFont : *named;

    QTextCharFormat format;
    if (!font.family.isEmpty()) {
        format.setFontFamilies({font.family});
    }
    format.setFontPointSize(character.halfPoints / 2.0);
    if (character.bold || font.bold) {
        format.setFontWeight(QFont::Bold);
    }
    if (character.italic || font.italic) {
        format.setFontItalic(true);
    }
    if (character.underline) {
        format.setFontUnderline(true);
    }
    if (character.strike) {
        format.setFontStrikeOut(true);
    }
    if (character.baseline != QTextCharFormat::AlignNormal) {
        format.setVerticalAlignment(character.baseline);
    }
    if (const QColor foreground = color(character.foreground); foreground.isValid()) {
        format.setForeground(foreground);
    }
    if (const QColor background = color(character.background); background.isValid()) {
        format.setBackground(background);
    }
    if (character.link >= 0) {
        format.setAnchor(true);
        format.setAnchorHref(m_fields[size_t(character.link)].url);
    }
    return format;
}

} // namespace Rtf
