#include "RtfWords.h"

#include <string_view>
#include <unordered_map>

namespace Rtf {

namespace {

using Table = std::unordered_map<std::string_view, WordMeaning>;

const Table& knownWords()
{
    static const Table words{
        {"fonttbl", {Word::FontTable}},
        {"colortbl", {Word::ColorTable}},
        {"expandedcolortbl", {Word::ExpandedColorTable}},
        {"field", {Word::Field}},
        {"fldinst", {Word::FieldInstruction}},
        {"fldrslt", {Word::FieldResult}},
        {"NeXTGraphic", {Word::Graphic}},
        {"info", {Word::Skipped}},
        {"stylesheet", {Word::Skipped}},
        {"listtable", {Word::Skipped}},
        {"listoverridetable", {Word::Skipped}},
        {"pict", {Word::Skipped}},
        {"object", {Word::Skipped}},
        {"xe", {Word::Skipped}},
        {"tc", {Word::Skipped}},
        {"header", {Word::Skipped}},
        {"headerl", {Word::Skipped}},
        {"headerr", {Word::Skipped}},
        {"headerf", {Word::Skipped}},
        {"footer", {Word::Skipped}},
        {"footerl", {Word::Skipped}},
        {"footerr", {Word::Skipped}},
        {"footerf", {Word::Skipped}},
        {"generator", {Word::Skipped}},
        {"ansicpg", {Word::AnsiCodePage}},
        {"mac", {Word::Mac}},
        {"deff", {Word::DefaultFont}},
        {"uc", {Word::FallbackCount}},
        {"plain", {Word::Plain}},
        {"f", {Word::FontNumber}},
        {"fs", {Word::FontSize}},
        {"cf", {Word::Foreground}},
        {"cb", {Word::Background}},
        {"highlight", {Word::Background}},
        {"b", {Word::Bold}},
        {"i", {Word::Italic}},
        {"ul", {Word::Underline}},
        {"uld", {Word::Underline}},
        {"uldash", {Word::Underline}},
        {"uldashd", {Word::Underline}},
        {"uldashdd", {Word::Underline}},
        {"uldb", {Word::Underline}},
        {"ulhwave", {Word::Underline}},
        {"ulldash", {Word::Underline}},
        {"ulth", {Word::Underline}},
        {"ulthd", {Word::Underline}},
        {"ulthdash", {Word::Underline}},
        {"ulthdashd", {Word::Underline}},
        {"ulthdashdd", {Word::Underline}},
        {"ulthldash", {Word::Underline}},
        {"ululdbwave", {Word::Underline}},
        {"ulw", {Word::Underline}},
        {"ulwave", {Word::Underline}},
        {"ulnone", {Word::NoUnderline}},
        {"strike", {Word::Strike}},
        {"striked", {Word::Strike}},
        {"super", {Word::Superscript}},
        {"up", {Word::Superscript}},
        {"sub", {Word::Subscript}},
        {"dn", {Word::Subscript}},
        {"nosupersub", {Word::NoBaseline}},
        {"pard", {Word::ParagraphDefaults}},
        {"ql", {Word::AlignLeft}},
        {"qr", {Word::AlignRight}},
        {"qc", {Word::AlignCenter}},
        {"qj", {Word::AlignJustify}},
        {"qnatural", {Word::AlignNatural}},
        {"li", {Word::LeftIndent}},
        {"ri", {Word::RightIndent}},
        {"fi", {Word::FirstIndent}},
        {"sb", {Word::SpaceBefore}},
        {"sa", {Word::SpaceAfter}},
        {"sl", {Word::LineHeight}},
        {"slmult", {Word::LineHeightIsMultiple}},
        {"tqr", {Word::TabRight}},
        {"tqc", {Word::TabCenter}},
        {"tqdec", {Word::TabDecimal}},
        {"tx", {Word::Tab}},
        {"u", {Word::Unicode}},
        {"par", {Word::NewParagraph}},
        {"sect", {Word::NewParagraph}},
        {"row", {Word::NewParagraph}},
        {"line", {Word::NamedCharacter, u'\u2028'}},
        {"page", {Word::NamedCharacter, u'\f'}},
        {"tab", {Word::NamedCharacter, u'\t'}},
        {"cell", {Word::NamedCharacter, u'\t'}},
        {"lquote", {Word::NamedCharacter, u'\u2018'}},
        {"rquote", {Word::NamedCharacter, u'\u2019'}},
        {"ldblquote", {Word::NamedCharacter, u'\u201C'}},
        {"rdblquote", {Word::NamedCharacter, u'\u201D'}},
        {"bullet", {Word::NamedCharacter, u'\u2022'}},
        {"endash", {Word::NamedCharacter, u'\u2013'}},
        {"emdash", {Word::NamedCharacter, u'\u2014'}},
        {"enspace", {Word::NamedCharacter, u'\u2002'}},
        {"emspace", {Word::NamedCharacter, u'\u2003'}},
        {"zwj", {Word::NamedCharacter, u'\u200D'}},
        {"zwnj", {Word::NamedCharacter, u'\u200C'}},
    };
    return words;
}

} // namespace

WordMeaning meaningOf(QByteArrayView word)
{
    const Table& words = knownWords();
    const auto found = words.find(std::string_view(word.data(), size_t(word.size())));
    return found == words.end() ? WordMeaning{} : found->second;
}

} // namespace Rtf
