// SPDX-License-Identifier: MIT
#include "RtfReader.h"

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

Reader::Reader(QByteArrayView bytes, const QList<TextAttachment>& attachments)
    : m_tokenizer(bytes)
{
    for (const TextAttachment& attachment : attachments) {
        m_attachments.insert(attachment.name.normalized(QString::NormalizationForm_C), attachment);
    }
}

ReadResult Reader::read()
{
    while (!m_finished) {
        const Token token = m_tokenizer.next();
        if (token.kind == TokenKind::End) {
            m_result.warnings.append(u"the text ends inside a group"_s);
            break;
        }
        handle(token);
    }
    flushBytes();
    if (m_attachment.complete) {
        insertAttachment();
    }
    endRun();
    const QList<AttributedText::Run>& runs = m_result.text.runs;
    if (m_paragraph != (runs.isEmpty() ? Paragraph() : m_result.text.styles[runs.constLast().style].paragraph)) {
        m_result.text.runs.append({0, styleOf(m_runCharacter)});
    }
    return std::move(m_result);
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
            m_result.warnings.append(u"groups are nested deeper than %1"_s.arg(maximumDepth));
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
        m_styles.clear();
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
    endRun();
    const auto pixels = [](int twips) {
        return std::clamp<qreal>(qreal(twips) / twipsPerPicturePixel, 0, maximumPicturePixels);
    };
    AttributedText& text = m_result.text;
    AttributedText::Attributes attributes = text.styles[styleOf(m_state.character)];
    attributes.attachment = attachmentNamed(TextAttachment::safeName(m_attachment.name));
    attributes.pictureSize = QSizeF(pixels(m_attachment.width), pixels(m_attachment.height));
    m_attachment = {};
    text.runs.append({1, text.styles.size()});
    text.styles.append(attributes);
    text.text += QChar::ObjectReplacementCharacter;
    m_runStart = text.text.size();
}

TextAttachment Reader::attachmentNamed(const QString& name)
{
    const QString key = name.normalized(QString::NormalizationForm_C);
    if (!m_attachments.contains(key)) {
        m_result.warnings.append(u"the file \"%1\" is missing"_s.arg(name));
        m_attachments.insert(key, {});
    }
    const TextAttachment& found = m_attachments[key];
    return {name, found.contents, found.isPackage};
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
    if (m_state.paragraph != m_paragraph) {
        endRun();
        m_paragraph = m_state.paragraph;
    }
    if (m_runCharacter != m_state.character) {
        endRun();
        m_runCharacter = m_state.character;
    }
    m_result.text.text += text;
}

bool Reader::isAtParagraphStart() const
{
    return m_result.text.text.isEmpty() || m_result.text.text.endsWith(u'\n');
}

void Reader::endRun()
{
    const qsizetype end = m_result.text.text.size();
    if (end > m_runStart) {
        m_result.text.runs.append({end - m_runStart, styleOf(m_runCharacter)});
        m_runStart = end;
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

qsizetype Reader::styleOf(const Character& character)
{
    QList<AttributedText::Attributes>& styles = m_result.text.styles;
    const auto [position, isNew] = m_styles.try_emplace(character, styles.size());
    qsizetype& style = position->second;
    if (isNew) {
        styles.append(attributesOf(character));
    } else if (styles[style].paragraph != m_paragraph) {
        AttributedText::Attributes attributes = styles[style];
        attributes.paragraph = m_paragraph;
        style = styles.size();
        styles.append(attributes);
    }
    return style;
}

AttributedText::Attributes Reader::attributesOf(const Character& character) const
{
    static const Font noFont;
    const Font* const named = m_fonts.font(effectiveFont(character));
    const Font& font = named == nullptr ? noFont : *named;
    return {
        .fontFamily = font.family,
        .fontSize = character.halfPoints / 2.0,
        .isBold = character.bold || font.bold,
        .isItalic = character.italic || font.italic,
        .isUnderlined = character.underline,
        .isStruckOut = character.strike,
        .superscript = character.superscript,
        .color = color(character.foreground),
        .backgroundColor = color(character.background),
        .link = character.link < 0 ? QString() : m_fields[size_t(character.link)].url,
        .paragraph = m_paragraph,
        .attachment = {},
        .pictureSize = {},
    };
}

} // namespace Rtf
