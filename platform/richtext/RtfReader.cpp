#include "RtfReader.h"

#include <QFont>
#include <QTextDocument>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace Rtf {

namespace {

constexpr size_t maximumDepth = 1000;
constexpr int maximumPicturePixels = 20'000;

/// The URL of a field's instruction `HYPERLINK "url"`; empty for other fields.
QString linkOf(const QString& instruction)
{
    const QString trimmed = instruction.trimmed();
    if (!trimmed.startsWith(u"HYPERLINK", Qt::CaseInsensitive)) {
        return {};
    }
    const QString argument = trimmed.sliced(9).trimmed();
    if (argument.startsWith(u'"')) {
        return argument.section(u'"', 1, 1);
    }
    return argument.section(u' ', 0, 0);
}

} // namespace

Reader::Reader(QByteArrayView bytes, const QList<TextAttachment>& attachments, QTextDocument& document)
    : m_tokenizer(bytes)
    , m_document(document)
    , m_cursor(&document)
{
    for (const TextAttachment& attachment : attachments) {
        m_attachments.insert(attachment.name.normalized(QString::NormalizationForm_C), attachment);
    }
}

QStringList Reader::read()
{
    while (!m_finished) {
        const Token token = m_tokenizer.next();
        if (token.kind == TokenKind::End) {
            m_warnings.append(u"the text ends inside a group"_s);
            break;
        }
        handle(token);
    }
    flushBytes();
    if (m_attachment.complete) {
        insertAttachment();
    }
    flushRun();
    return m_warnings;
}

void Reader::handle(Token token)
{
    if (token.kind == TokenKind::GroupBegin) {
        beginGroup();
        return;
    }
    if (token.kind == TokenKind::GroupEnd) {
        endGroup();
        return;
    }
    if (m_state.destination == Destination::Skipped || (m_fallbackLeft > 0 && skipsFallback(token))) {
        return;
    }
    switch (token.kind) {
    case TokenKind::Word:
        handleWord(token);
        break;
    case TokenKind::Symbol:
        handleSymbol(token.text.front());
        break;
    case TokenKind::Byte: {
        const char byte = char(token.value);
        appendBytes(QByteArrayView(&byte, 1));
        break;
    }
    default:
        appendBytes(token.text);
        break;
    }
}

void Reader::beginGroup()
{
    flushBytes();
    m_fallbackLeft = 0;
    if (m_stack.size() >= maximumDepth) {
        if (m_tooDeep++ == 0) {
            m_warnings.append(u"groups are nested deeper than %1"_s.arg(maximumDepth));
        }
        return;
    }
    m_stack.push_back(m_state);
}

void Reader::endGroup()
{
    flushBytes();
    m_fallbackLeft = 0;
    m_starred = false;
    if (m_tooDeep > 0) {
        --m_tooDeep;
        return;
    }
    if (m_attachment.complete) {
        insertAttachment();
    }
    if (m_stack.size() <= 1 && isAtParagraphStart()) {
        appendBody({});
    }
    const Destination ended = m_state.destination;
    if (!m_stack.empty()) {
        m_state = std::move(m_stack.back());
        m_stack.pop_back();
    }
    m_finished = m_stack.empty();
    if (ended == Destination::FontTable) {
        m_fonts.endEntry();
        m_formats.clear();
    }
    if (ended == Destination::AttachmentName && m_state.destination != Destination::AttachmentName) {
        m_attachment.complete = true;
    }
}

bool Reader::skipsFallback(Token& token)
{
    // A text that relies on one fallback character too many loses less this way round.
    if (token.kind == TokenKind::Word && token.text == "u") {
        m_fallbackLeft = 0;
        return false;
    }
    if (token.kind != TokenKind::Text) {
        --m_fallbackLeft;
        return true;
    }
    const qsizetype skipped = std::min<qsizetype>(m_fallbackLeft, token.text.size());
    m_fallbackLeft -= int(skipped);
    token.text = token.text.sliced(skipped);
    return token.text.isEmpty();
}

void Reader::handleSymbol(char symbol)
{
    switch (symbol) {
    case '*':
        m_starred = true;
        return;
    case '\n':
        append(u"\n");
        return;
    case '~':
        append(u"\u00A0");
        return;
    case '_':
        append(u"\u2011");
        return;
    case '-':
        append(u"\u00AD");
        return;
    case '\t':
        append(u"\t");
        return;
    case '\\':
    case '{':
    case '}':
        append(QString(QLatin1Char(symbol)));
        return;
    default:
        return;
    }
}

void Reader::beginField()
{
    m_fields.emplace_back();
    m_state.field = int(m_fields.size()) - 1;
}

void Reader::beginFieldInstruction()
{
    m_state.destination = m_state.field >= 0 ? Destination::FieldInstruction : Destination::Skipped;
}

void Reader::beginFieldResult()
{
    if (m_state.field < 0) {
        return;
    }
    Field& field = m_fields[size_t(m_state.field)];
    field.url = linkOf(field.instruction);
    if (!field.url.isEmpty()) {
        m_state.character.link = m_state.field;
    }
}

void Reader::beginAttachment()
{
    m_attachment = {};
    m_state.destination = Destination::AttachmentName;
}

bool Reader::takesAttachmentCharacter()
{
    if (!m_attachment.complete || m_state.destination != Destination::Body) {
        return false;
    }
    insertAttachment();
    return true;
}

void Reader::insertAttachment()
{
    appendBody({});
    flushRun();
    const QString name = TextAttachment::safeName(m_attachment.name);
    const auto pixels = [](int twips) {
        return std::clamp<qreal>(qreal(twips) / twipsPerPicturePixel, 0, maximumPicturePixels);
    };
    const QSizeF size(pixels(m_attachment.width), pixels(m_attachment.height));
    m_attachment = {};
    if (!TextAttachment::in(m_document, name)) {
        attachmentNamed(name).addTo(m_document);
    }
    QTextCharFormat format = formatOf(m_state.character);
    format.merge(TextAttachment::imageFormat(name, size));
    m_cursor.insertText(QString(QChar::ObjectReplacementCharacter), format);
}

TextAttachment Reader::attachmentNamed(const QString& name)
{
    const auto found = m_attachments.constFind(name.normalized(QString::NormalizationForm_C));
    if (found == m_attachments.constEnd()) {
        m_warnings.append(u"the file \"%1\" is missing"_s.arg(name));
        return {name, {}, false};
    }
    return {name, found->contents, found->isPackage};
}

void Reader::appendBytes(QByteArrayView bytes)
{
    if (takesAttachmentCharacter()) {
        bytes = bytes.sliced(1);
    }
    const CodePage& page = codePage();
    if (page.isMultiByte()) {
        m_bytes.append(bytes);
        return;
    }
    QVarLengthArray<char16_t, 512> decoded(bytes.size());
    std::ranges::transform(bytes, decoded.begin(), [&page](char byte) { return page.character(uchar(byte)); });
    append(QStringView(decoded.constData(), decoded.size()));
}

void Reader::flushBytes()
{
    if (!m_bytes.isEmpty()) {
        const QString decoded = codePage().decoded(m_bytes);
        m_bytes.clear();
        append(decoded);
    }
}

void Reader::appendCodePoint(int value)
{
    const int code = value < 0 ? value + 0x10000 : value;
    if (code <= 0 || code > 0x10FFFF) {
        append(u"\uFFFD");
    } else if (code > 0xFFFF) {
        append(QStringView(QChar::fromUcs4(char32_t(code))));
    } else {
        appendUnit(char16_t(code));
    }
}

void Reader::appendUnit(char16_t unit)
{
    if (QChar::isHighSurrogate(unit)) {
        append({});
        m_highSurrogate = unit;
    } else if (QChar::isLowSurrogate(unit) && m_highSurrogate != 0) {
        const auto pair = std::to_array<char16_t>({m_highSurrogate, unit});
        m_highSurrogate = 0;
        append(QStringView(pair.data(), 2));
    } else {
        // Documents use noncharacters as marks of their own, and not every file can hold them.
        const bool isText = !QChar::isSurrogate(unit) && !QChar::isNonCharacter(unit);
        append(isText ? QStringView(&unit, 1) : QStringView(u"\uFFFD"));
    }
}

void Reader::append(QStringView text)
{
    if (m_highSurrogate != 0) {
        m_highSurrogate = 0;
        append(u"\uFFFD");
    }
    if (text.isEmpty()) {
        return;
    }
    switch (m_state.destination) {
    case Destination::Body:
        appendBody(text);
        break;
    case Destination::FontTable:
        m_fonts.append(text);
        break;
    case Destination::ColorTable:
        m_colors.append(text);
        break;
    case Destination::ExpandedColorTable:
        m_expandedColors.append(text);
        break;
    case Destination::FieldInstruction:
        m_fields[size_t(m_state.field)].instruction += text;
        break;
    case Destination::AttachmentName:
        m_attachment.name += text;
        break;
    case Destination::Skipped:
        break;
    }
}

void Reader::appendBody(QStringView text)
{
    if (m_state.paragraph != m_blockParagraph) {
        flushRun();
        m_blockParagraph = m_state.paragraph;
        m_cursor.setBlockFormat(m_blockParagraph.toFormat());
    }
    if (m_runCharacter != m_state.character) {
        flushRun();
        m_runCharacter = m_state.character;
    }
    m_run += text;
}

bool Reader::isAtParagraphStart() const
{
    return m_run.isEmpty() ? m_cursor.atBlockStart() : m_run.endsWith(u'\n');
}

void Reader::flushRun()
{
    if (!m_run.isEmpty()) {
        m_cursor.insertText(m_run, formatOf(m_runCharacter));
        m_run.clear();
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

ColorTable& Reader::colorTable()
{
    return m_state.destination == Destination::ColorTable ? m_colors : m_expandedColors;
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
