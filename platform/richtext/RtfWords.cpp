// SPDX-License-Identifier: MIT
#include "RtfReader.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace Rtf {

/// What each control word does to a reader, and where.
struct Reader::Words
{
    /// Destinations, and groups that begin with `\*`.
    using Places = unsigned;
    using Effect = void (*)(Reader& reader, const Token& token);

    struct Word
    {
        std::string_view name;
        Places places;
        Effect effect;
    };

    static constexpr Places optional = 1U << 31U;
    /// For words that begin a group with a content of its own.
    static constexpr Places group = ~Places(0);
    static constexpr Places anywhere = ~optional;
    static constexpr auto body = Places(Destination::Body);
    static constexpr auto fonts = Places(Destination::FontTable);
    static constexpr auto colors = Places(Destination::ColorTable) | Places(Destination::ExpandedColorTable);
    static constexpr auto attachment = Places(Destination::AttachmentName);

    // The largest length that the format's own editors offer: 22 inches.
    static constexpr int maximumTwips = 22 * 1440;
    static constexpr int maximumHalfPoints = 2 * 1638;
    static constexpr int maximumFallback = 32;
    static constexpr int maximumTabs = 64;

    /// Null for an unknown word.
    static const Word* find(std::string_view name);

    /// The number of @p token as a length.
    static int twips(const Token& token) { return std::clamp(token.value, -maximumTwips, maximumTwips); }

    // The kinds of words, as RTF calls them: destinations, symbols, flags, toggles and values.

    template <void (Reader::*operation)()>
    static void calls(Reader& reader, const Token&)
    {
        (reader.*operation)();
    }

    template <Destination entered>
    static void destination(Reader& reader, const Token&)
    {
        reader.m_state.destination = entered;
    }

    template <char16_t character>
    static void symbol(Reader& reader, const Token&)
    {
        const char16_t text = character;
        reader.append(QStringView(&text, 1));
    }

    template <auto attribute, auto state>
    static void flag(Reader& reader, const Token&)
    {
        reader.m_state[attribute] = state;
    }

    template <auto attribute>
    static void toggle(Reader& reader, const Token& token)
    {
        reader.m_state[attribute] = token.isOn();
    }

    template <auto attribute>
    static void value(Reader& reader, const Token& token)
    {
        reader.m_state[attribute] = token.value;
    }

    template <auto attribute>
    static void length(Reader& reader, const Token& token)
    {
        reader.m_state[attribute] = twips(token);
    }

    template <int level>
    static void superscript(Reader& reader, const Token& token)
    {
        reader.m_state.character.superscript = token.isOn() ? level : 0;
    }

    template <int maximum>
    static void component(Reader& reader, const Token& token)
    {
        reader.colorTable().addComponent(float(std::clamp(token.value, 0, maximum)) / float(maximum));
    }

    template <auto property>
    static void colorFlag(Reader& reader, const Token&)
    {
        (reader.colorTable().*property)();
    }

    template <auto side>
    static void pictureSize(Reader& reader, const Token& token)
    {
        reader.m_attachment.*side = token.value;
    }

    template <auto type>
    static void tabType(Reader& reader, const Token&)
    {
        reader.m_tabType = type;
    }

    static void documentCodePage(Reader& reader, const Token& token)
    {
        reader.m_documentCodePage = &CodePage::numbered(token.value);
    }

    static void macRoman(Reader& reader, const Token&) { reader.m_documentCodePage = &CodePage::numbered(10000); }

    static void defaultFont(Reader& reader, const Token& token) { reader.m_defaultFont = token.value; }

    static void fallbackCount(Reader& reader, const Token& token)
    {
        reader.m_state.fallbackCount = std::clamp(token.value, 0, maximumFallback);
    }

    static void codePoint(Reader& reader, const Token& token)
    {
        if (!reader.takesAttachmentCharacter()) {
            reader.appendCodePoint(token.value);
        }
        reader.m_fallbackLeft = reader.m_state.fallbackCount;
    }

    static void font(Reader& reader, const Token& token)
    {
        if (reader.m_state.destination == Destination::FontTable) {
            reader.m_fonts.beginEntry(token.value);
        } else {
            reader.m_state.character.font = token.value;
        }
    }

    static void charset(Reader& reader, const Token& token) { reader.m_fonts.setCharset(token.value); }

    static void fontSize(Reader& reader, const Token& token)
    {
        reader.m_state.character.halfPoints =
            token.value > 0 ? std::min(token.value, maximumHalfPoints) : Character().halfPoints;
    }

    static void plain(Reader& reader, const Token&)
    {
        reader.m_state.character = {.link = reader.m_state.character.link};
    }

    static void paragraphDefaults(Reader& reader, const Token&)
    {
        reader.m_state.paragraph = {};
        reader.m_tabType = QTextOption::LeftTab;
    }

    static void lineHeight(Reader& reader, const Token& token)
    {
        Paragraph& paragraph = reader.m_state.paragraph;
        const int height = twips(token);
        paragraph.lineHeight = std::abs(height);
        paragraph.spacing = height == 0  ? QTextBlockFormat::SingleHeight
                            : height > 0 ? QTextBlockFormat::MinimumHeight
                                         : QTextBlockFormat::FixedHeight;
    }

    static void lineHeightIsMultiple(Reader& reader, const Token& token)
    {
        Paragraph& paragraph = reader.m_state.paragraph;
        if (token.value == 1 && paragraph.spacing == QTextBlockFormat::MinimumHeight) {
            paragraph.spacing = QTextBlockFormat::ProportionalHeight;
        }
    }

    static void tab(Reader& reader, const Token& token)
    {
        const QTextOption::TabType type = std::exchange(reader.m_tabType, QTextOption::LeftTab);
        // The delimiter is that of the text's language, which RTF does not tell.
        const QChar delimiter = type == QTextOption::DelimiterTab ? u'.' : QChar();
        QList<QTextOption::Tab>& tabs = reader.m_state.paragraph.tabs;
        if (tabs.size() < maximumTabs) {
            tabs.append(QTextOption::Tab(qreal(twips(token)) / twipsPerPixel, type, delimiter));
        }
    }
};

const Reader::Words::Word* Reader::Words::find(std::string_view name)
{
    static constexpr auto words = std::to_array<Word>({
        {"fonttbl", group, destination<Destination::FontTable>},
        {"colortbl", group, destination<Destination::ColorTable>},
        {"expandedcolortbl", group, destination<Destination::ExpandedColorTable>},
        {"field", group, calls<&Reader::beginField>},
        {"fldinst", group, calls<&Reader::beginFieldInstruction>},
        {"fldrslt", group, calls<&Reader::beginFieldResult>},
        {"NeXTGraphic", group, calls<&Reader::beginAttachment>},
        {"info", group, destination<Destination::Skipped>},
        {"stylesheet", group, destination<Destination::Skipped>},
        {"listtable", group, destination<Destination::Skipped>},
        {"listoverridetable", group, destination<Destination::Skipped>},
        {"pict", group, destination<Destination::Skipped>},
        {"object", group, destination<Destination::Skipped>},
        {"xe", group, destination<Destination::Skipped>},
        {"tc", group, destination<Destination::Skipped>},
        {"header", group, destination<Destination::Skipped>},
        {"headerl", group, destination<Destination::Skipped>},
        {"headerr", group, destination<Destination::Skipped>},
        {"headerf", group, destination<Destination::Skipped>},
        {"footer", group, destination<Destination::Skipped>},
        {"footerl", group, destination<Destination::Skipped>},
        {"footerr", group, destination<Destination::Skipped>},
        {"footerf", group, destination<Destination::Skipped>},
        {"generator", group, destination<Destination::Skipped>},
        {"ansicpg", anywhere, documentCodePage},
        {"mac", anywhere, macRoman},
        {"deff", anywhere, defaultFont},
        {"uc", anywhere, fallbackCount},
        {"plain", body, plain},
        {"f", body | fonts, font},
        {"fcharset", fonts, charset},
        {"fs", body, fontSize},
        {"cf", body, value<&Character::foreground>},
        {"cb", body, value<&Character::background>},
        {"highlight", body, value<&Character::background>},
        {"b", body, toggle<&Character::bold>},
        {"i", body, toggle<&Character::italic>},
        {"ul", body, toggle<&Character::underline>},
        {"uld", body, toggle<&Character::underline>},
        {"uldash", body, toggle<&Character::underline>},
        {"uldashd", body, toggle<&Character::underline>},
        {"uldashdd", body, toggle<&Character::underline>},
        {"uldb", body, toggle<&Character::underline>},
        {"ulhwave", body, toggle<&Character::underline>},
        {"ulldash", body, toggle<&Character::underline>},
        {"ulth", body, toggle<&Character::underline>},
        {"ulthd", body, toggle<&Character::underline>},
        {"ulthdash", body, toggle<&Character::underline>},
        {"ulthdashd", body, toggle<&Character::underline>},
        {"ulthdashdd", body, toggle<&Character::underline>},
        {"ulthldash", body, toggle<&Character::underline>},
        {"ululdbwave", body, toggle<&Character::underline>},
        {"ulw", body, toggle<&Character::underline>},
        {"ulwave", body, toggle<&Character::underline>},
        {"ulnone", body, flag<&Character::underline, false>},
        {"strike", body, toggle<&Character::strike>},
        {"striked", body, toggle<&Character::strike>},
        {"super", body, superscript<1>},
        {"up", body, superscript<1>},
        {"sub", body, superscript<-1>},
        {"dn", body, superscript<-1>},
        {"nosupersub", body, flag<&Character::superscript, 0>},
        {"pard", body, paragraphDefaults},
        {"ql", body, flag<&Paragraph::side, Qt::AlignLeft>},
        {"qr", body, flag<&Paragraph::side, Qt::AlignRight>},
        {"qc", body, flag<&Paragraph::side, Qt::AlignHCenter>},
        {"qj", body, flag<&Paragraph::side, Qt::AlignJustify>},
        {"qnatural", body, flag<&Paragraph::side, Qt::AlignmentFlag{}>},
        {"li", body, length<&Paragraph::leftIndent>},
        {"ri", body, length<&Paragraph::rightIndent>},
        {"fi", body, length<&Paragraph::firstLineIndent>},
        {"sb", body, length<&Paragraph::spaceBefore>},
        {"sa", body, length<&Paragraph::spaceAfter>},
        {"sl", body, lineHeight},
        {"slmult", body, lineHeightIsMultiple},
        {"tqr", body, tabType<QTextOption::RightTab>},
        {"tqc", body, tabType<QTextOption::CenterTab>},
        {"tqdec", body, tabType<QTextOption::DelimiterTab>},
        {"tx", body, tab},
        {"u", anywhere, codePoint},
        {"par", anywhere, symbol<u'\n'>},
        {"sect", anywhere, symbol<u'\n'>},
        {"row", anywhere, symbol<u'\n'>},
        {"\n", anywhere, symbol<u'\n'>},
        {"\t", anywhere, symbol<u'\t'>},
        {"\\", anywhere, symbol<u'\\'>},
        {"{", anywhere, symbol<u'{'>},
        {"}", anywhere, symbol<u'}'>},
        {"~", anywhere, symbol<u'\u00A0'>},
        {"_", anywhere, symbol<u'\u2011'>},
        {"-", anywhere, symbol<u'\u00AD'>},
        {"line", anywhere, symbol<u'\u2028'>},
        {"page", anywhere, symbol<u'\f'>},
        {"tab", anywhere, symbol<u'\t'>},
        {"cell", anywhere, symbol<u'\t'>},
        {"lquote", anywhere, symbol<u'\u2018'>},
        {"rquote", anywhere, symbol<u'\u2019'>},
        {"ldblquote", anywhere, symbol<u'\u201C'>},
        {"rdblquote", anywhere, symbol<u'\u201D'>},
        {"bullet", anywhere, symbol<u'\u2022'>},
        {"endash", anywhere, symbol<u'\u2013'>},
        {"emdash", anywhere, symbol<u'\u2014'>},
        {"enspace", anywhere, symbol<u'\u2002'>},
        {"emspace", anywhere, symbol<u'\u2003'>},
        {"zwj", anywhere, symbol<u'\u200D'>},
        {"zwnj", anywhere, symbol<u'\u200C'>},
        {"red", colors, component<255>},
        {"green", colors, component<255>},
        {"blue", colors, component<255>},
        {"c", colors, component<100'000>},
        {"csgray", colors, colorFlag<&ColorTable::setGray>},
        {"cname", colors, colorFlag<&ColorTable::setNamed>},
        {"width", attachment, pictureSize<&PendingAttachment::width>},
        {"height", attachment, pictureSize<&PendingAttachment::height>},
    });
    static const auto byName = [] {
        std::unordered_map<std::string_view, const Word*> found;
        for (const Word& word : words) {
            found.emplace(word.name, &word);
        }
        return found;
    }();
    const auto found = byName.find(name);
    return found == byName.end() ? nullptr : found->second;
}

void Reader::handleSymbol(char symbol)
{
    if (symbol == '*') {
        m_starred = true;
        return;
    }
    flushBytes();
    if (const Words::Word* const word = Words::find({&symbol, 1}); word != nullptr) {
        word->effect(*this, {});
    }
}

void Reader::handleWord(const Token& token)
{
    flushBytes();
    const Words::Word* const word = Words::find({token.text.data(), size_t(token.text.size())});
    const Words::Places places = word == nullptr ? 0 : word->places;
    if (std::exchange(m_starred, false) && (places & Words::optional) == 0) {
        m_state.destination = Destination::Skipped;
    } else if ((places & Words::Places(m_state.destination)) != 0) {
        word->effect(*this, token);
    }
}

} // namespace Rtf
