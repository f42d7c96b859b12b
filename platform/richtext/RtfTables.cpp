// SPDX-License-Identifier: MIT
#include "RtfTables.h"

#include <QStringList>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace Rtf {

namespace {

struct Style
{
    QLatin1StringView suffix;
    bool bold;
    bool italic;
};

constexpr auto styles = std::to_array<Style>({{"BoldItalic"_L1, true, true}, {"BoldOblique"_L1, true, true},
    {"BoldItalicMT"_L1, true, true}, {"BoldMT"_L1, true, false}, {"Bold"_L1, true, false}, {"ItalicMT"_L1, false, true},
    {"Italic"_L1, false, true}, {"Oblique"_L1, false, true}, {"Regular"_L1, false, false}, {"Roman"_L1, false, false}});

struct FamilyName
{
    QLatin1StringView fileName;
    QLatin1StringView family;
};

// The families whose PostScript name cannot be taken apart by rule.
constexpr auto familyNames = std::to_array<FamilyName>(
    {{"TimesNewRomanPSMT"_L1, "Times New Roman"_L1}, {"TimesNewRomanPS"_L1, "Times New Roman"_L1},
        {"ArialMT"_L1, "Arial"_L1}, {"CourierNewPSMT"_L1, "Courier New"_L1}, {"CourierNewPS"_L1, "Courier New"_L1},
        {"HelveticaNeue"_L1, "Helvetica Neue"_L1}, {"LucidaGrande"_L1, "Lucida Grande"_L1},
        {"TrebuchetMS"_L1, "Trebuchet MS"_L1}, {"ComicSansMS"_L1, "Comic Sans MS"_L1}});

QString familyOf(const QString& name)
{
    const auto* const known = std::ranges::find(familyNames, name, &FamilyName::fileName);
    return known == std::end(familyNames) ? name : QString(known->family);
}

} // namespace

Font Font::fromName(const QString& name)
{
    const qsizetype hyphen = name.lastIndexOf(u'-');
    if (hyphen > 0) {
        const auto suffix = QStringView(name).sliced(hyphen + 1);
        const auto* const style =
            std::ranges::find_if(styles, [suffix](const Style& known) { return suffix == known.suffix; });
        if (style != std::end(styles)) {
            return {familyOf(name.first(hyphen)), style->bold, style->italic, 0};
        }
    }
    return {familyOf(name), false, false, 0};
}

void FontTable::beginEntry(int number)
{
    m_number = number;
    m_charset = 0;
    m_name.clear();
}

void FontTable::append(QStringView text)
{
    for (const QChar character : text) {
        if (character == u';') {
            endEntry();
        } else {
            m_name += character;
        }
    }
}

void FontTable::endEntry()
{
    const QString name = m_name.trimmed();
    m_name.clear();
    if (name.isEmpty()) {
        return;
    }
    Font font = Font::fromName(name);
    font.charset = m_charset;
    m_fonts.insert(m_number, font);
}

const Font* FontTable::font(int number) const
{
    const auto found = m_fonts.constFind(number);
    return found == m_fonts.constEnd() ? nullptr : &found.value();
}

const CodePage& FontTable::codePageOf(int number, const CodePage& documentCodePage) const
{
    const Font* const named = font(number);
    return named == nullptr ? documentCodePage : CodePage::ofCharset(named->charset, documentCodePage);
}

void ColorTable::append(QStringView text)
{
    for (const QChar character : text) {
        if (character == u';') {
            endEntry();
        } else {
            m_text += character;
        }
    }
}

void ColorTable::endEntry()
{
    const QString name = m_text.trimmed();
    Entry entry;
    entry.themed =
        m_named &&
        QStringList{u"textColor"_s, u"labelColor"_s, u"controlTextColor"_s, u"textBackgroundColor"_s}.contains(name);
    if (m_gray && !m_components.empty()) {
        const float gray = m_components[0];
        entry.color = QColor::fromRgbF(gray, gray, gray, m_components.size() > 1 ? m_components[1] : 1.0F);
    } else if (m_components.size() >= 3) {
        entry.color = QColor::fromRgbF(
            m_components[0], m_components[1], m_components[2], m_components.size() > 3 ? m_components[3] : 1.0F);
    }
    m_entries.push_back(entry);
    m_components.clear();
    m_text.clear();
    m_gray = false;
    m_named = false;
}

QColor ColorTable::color(int index) const
{
    return index >= 0 && size_t(index) < m_entries.size() ? m_entries[size_t(index)].color : QColor();
}

bool ColorTable::isThemeColor(int index) const
{
    return index >= 0 && size_t(index) < m_entries.size() && m_entries[size_t(index)].themed;
}

} // namespace Rtf
