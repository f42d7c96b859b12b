// SPDX-License-Identifier: MIT
#include "RtfWriter.h"

#include "CharacterSize.h"
#include "RtfCodePage.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTextList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Rtf {

namespace {

QByteArray escaped(QStringView text)
{
    QByteArray bytes;
    for (const QChar character : text) {
        const char16_t unit = character.unicode();
        if (unit == u'\\' || unit == u'{' || unit == u'}') {
            bytes += '\\';
            bytes += char(unit);
        } else if (unit >= u' ' && unit < 0x7F) {
            bytes += char(unit);
        } else {
            bytes += "\\uc0\\u" + QByteArray::number(uint(unit)) + ' ';
        }
    }
    return bytes;
}

QByteArray baselineWord(QTextCharFormat::VerticalAlignment baseline)
{
    return baseline == QTextCharFormat::AlignSuperScript ? "\\super"
           : baseline == QTextCharFormat::AlignSubScript ? "\\sub"
                                                         : "\\nosupersub";
}

QByteArray picturePng(const QVariant& resource)
{
    QByteArray png;
    QBuffer buffer(&png);
    const auto image = resource.value<QImage>();
    if (!image.isNull()) {
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "PNG");
    }
    return png;
}

} // namespace

Writer::Writer(const QTextDocument& document)
    : m_document(document)
{
}

Written Writer::write()
{
    m_body += m_paragraph.toRtf();
    for (QTextBlock block = m_document.begin(); block.isValid(); block = block.next()) {
        if (block != m_document.begin()) {
            m_body += "\\\n";
        }
        writeBlock(block);
    }
    return {header() + m_body + '}', m_attachments};
}

void Writer::writeBlock(const QTextBlock& block)
{
    const Paragraph paragraph = Paragraph::fromBlock(block);
    if (paragraph != m_paragraph) {
        m_paragraph = paragraph;
        m_body += paragraph.toRtf();
    }
    if (const QTextList* const list = block.textList(); list != nullptr) {
        // The numbered styles follow the others, downwards.
        const bool isNumbered = list->format().style() <= QTextListFormat::ListDecimal;
        const QString marker = isNumbered ? list->itemText(block) : u"\u2022"_s;
        writeText(QString(u'\t' + marker + u'\t'));
    }
    for (QTextBlock::iterator it = block.begin(); !it.atEnd(); ++it) {
        writeFragment(it.fragment());
    }
}

void Writer::writeFragment(const QTextFragment& fragment)
{
    const QTextCharFormat format = fragment.charFormat();
    const QString url = format.isAnchor() ? format.anchorHref() : QString();
    const Character before = m_character;
    if (!url.isEmpty()) {
        QString quotable = url;
        quotable.replace(u'"', u"%22"_s);
        m_body += R"({\field{\*\fldinst{HYPERLINK ")" + escaped(quotable) + R"("}}{\fldrslt )";
    }
    writeAttributes(characterOf(format));
    if (format.isImageFormat()) {
        writeTextWithAttachments(fragment.text(), format.toImageFormat());
    } else {
        writeText(fragment.text());
    }
    if (!url.isEmpty()) {
        m_body += "}}";
        m_character = before;
    }
}

Writer::Character Writer::characterOf(const QTextCharFormat& format)
{
    const QFont defaultFont = m_document.defaultFont();
    const QStringList families = format.fontFamilies().toStringList();
    return {.font = fontNumber(families.isEmpty() ? defaultFont.family() : families.front()),
        .halfPoints = std::max(1, qRound(pointSizeOf(format, defaultFont) * 2)),
        .foreground = colorNumber(format, QTextFormat::ForegroundBrush),
        .background = colorNumber(format, QTextFormat::BackgroundBrush),
        .baseline = format.verticalAlignment(),
        .bold = format.fontWeight() >= QFont::DemiBold,
        .italic = format.fontItalic(),
        .underline = format.fontUnderline(),
        .strike = format.fontStrikeOut()};
}

qsizetype Writer::fontNumber(const QString& family)
{
    const qsizetype known = m_families.indexOf(family);
    if (known >= 0) {
        return known;
    }
    m_families.append(family);
    return m_families.size() - 1;
}

qsizetype Writer::colorNumber(const QTextFormat& format, QTextFormat::Property property)
{
    if (!format.hasProperty(property)) {
        return 0;
    }
    const QColor color = format.brushProperty(property).color();
    const qsizetype known = m_colors.indexOf(color);
    if (known >= 0) {
        return known + 2;
    }
    m_colors.append(color);
    return m_colors.size() + 1;
}

void Writer::writeAttributes(const Character& wanted)
{
    QByteArray words;
    const auto write = [&](auto Character::*attribute, auto wordOf) {
        if (wanted.*attribute != m_character.*attribute) {
            words += wordOf(wanted.*attribute);
        }
    };
    const auto number = [](const char* word) {
        return [word](auto value) -> QByteArray { return word + QByteArray::number(value); };
    };
    const auto toggle = [](const char* on, const char* off) {
        return [on, off](bool isOn) { return QByteArray(isOn ? on : off); };
    };
    write(&Character::font, number("\\f"));
    write(&Character::halfPoints, number("\\fs"));
    write(&Character::bold, toggle("\\b", "\\b0"));
    write(&Character::italic, toggle("\\i", "\\i0"));
    write(&Character::underline, toggle("\\ul", "\\ulnone"));
    write(&Character::strike, toggle("\\strike", "\\strike0"));
    write(&Character::baseline, baselineWord);
    write(&Character::background, number("\\cb"));
    write(&Character::foreground, number("\\cf"));
    m_character = wanted;
    if (!words.isEmpty()) {
        m_body += words + ' ';
    }
}

// Text beside a picture may have the picture's format all the same: only the character shows it.
void Writer::writeTextWithAttachments(QStringView text, const QTextImageFormat& format)
{
    const auto isAttachment = [](QChar character) { return character == QChar::ObjectReplacementCharacter; };
    auto position = text.begin();
    while (position != text.end()) {
        const auto found = std::find_if(position, text.end(), isAttachment);
        writeText(QStringView(position, found));
        position = found;
        if (position != text.end()) {
            writeAttachment(format);
            ++position;
        }
    }
}

void Writer::writeAttachment(const QTextImageFormat& format)
{
    const TextAttachment attachment = attachmentFor(format);
    const auto twips = [](qreal pixels) { return QByteArray::number(qRound(pixels * twipsPerPicturePixel)); };
    m_body += R"({{\NeXTGraphic )" + escaped(attachment.name) + R"( \width)" + twips(format.width()) + R"( \height)" +
              twips(format.height()) + " \\noorient\n}\\'ac}";
}

TextAttachment Writer::attachmentFor(const QTextImageFormat& format)
{
    const QUrl url(format.name());
    TextAttachment attachment;
    if (const auto stored = TextAttachment::nameOf(url)) {
        attachment = TextAttachment::in(m_document, *stored).value_or(TextAttachment{*stored, {}, false});
    } else {
        const QByteArray digest = QCryptographicHash::hash(url.toEncoded(), QCryptographicHash::Sha1).toHex();
        attachment = {QString::fromLatin1(digest) + u".png",
            picturePng(m_document.resource(QTextDocument::ImageResource, url)), false};
    }
    if (std::ranges::find(m_attachments, attachment.name, &TextAttachment::name) == m_attachments.end()) {
        m_attachments.append(attachment);
    }
    return attachment;
}

void Writer::writeText(QStringView text)
{
    qsizetype plain = 0;
    const auto isPlain = [](QChar character) {
        const char16_t unit = character.unicode();
        return (unit >= u' ' && unit < 0x7F && unit != u'\\' && unit != u'{' && unit != u'}') || unit == u'\t';
    };
    for (qsizetype position = 0; position < text.size(); ++position) {
        if (!isPlain(text[position])) {
            m_body += text.sliced(plain, position - plain).toLatin1();
            writeUnit(text[position].unicode());
            plain = position + 1;
        }
    }
    m_body += text.sliced(plain).toLatin1();
}

void Writer::writeUnit(char16_t unit)
{
    static const CodePage& western = CodePage::numbered(1252);
    switch (unit) {
    case u'\\':
    case u'{':
    case u'}':
        m_body += '\\';
        m_body += char(unit);
        return;
    case u'\u2028':
        m_body += "\\line ";
        return;
    case u'\f':
        m_body += "\\page ";
        return;
    default:
        break;
    }
    if (const uchar byte = western.byteOf(unit); byte != 0) {
        m_body += "\\'" + QByteArray(1, char(byte)).toHex();
    } else {
        m_body += "\\uc0\\u" + QByteArray::number(uint(unit)) + ' ';
    }
}

QByteArray Writer::header() const
{
    QByteArray fonts;
    for (qsizetype number = 0; number < m_families.size(); ++number) {
        QString family = m_families[number];
        fonts += "\\f" + QByteArray::number(number) + "\\fnil\\fcharset0 " + escaped(family.remove(u';')) + ';';
    }
    QByteArray colors(";\\red255\\green255\\blue255;");
    QByteArray refinedColors(";;");
    const auto component = [](float value) -> QByteArray {
        return "\\c" + QByteArray::number(qRound(value * 100'000.0F));
    };
    for (const QColor& color : m_colors) {
        const QColor rgb = color.toRgb();
        colors += "\\red" + QByteArray::number(rgb.red()) + "\\green" + QByteArray::number(rgb.green()) + "\\blue" +
                  QByteArray::number(rgb.blue()) + ';';
        refinedColors += "\\cssrgb" + component(rgb.redF()) + component(rgb.greenF()) + component(rgb.blueF()) +
                         (rgb.alpha() < 255 ? component(rgb.alphaF()) : QByteArray()) + ';';
    }
    return "{\\rtf1\\ansi\\ansicpg1252\n{\\fonttbl" + fonts + "}\n{\\colortbl" + colors + "}\n{\\*\\expandedcolortbl" +
           refinedColors + "}\n";
}

} // namespace Rtf
