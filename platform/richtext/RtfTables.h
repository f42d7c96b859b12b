// SPDX-License-Identifier: MIT
#pragma once

#include "RtfCodePage.h"

#include <QColor>
#include <QHash>
#include <QString>

#include <vector>

namespace Rtf {

/// A font of the font table.
struct Font
{
    QString family;
    bool bold = false;
    bool italic = false;
    int charset = 0;

    /// Takes a name as the platform writes it (`Times-BoldItalic`) apart into family and style.
    static Font fromName(const QString& name);
};

/// The font table while it is read, and then by number.
class FontTable final
{
public:
    void beginEntry(int number);

    /// The character set of the entry that has begun, as `\fcharset` gives it.
    void setCharset(int charset) { m_charset = charset; }

    void append(QStringView text);
    /// Ends an entry that has no semicolon.
    void endEntry();

    /// Null when there is no such font.
    const Font* font(int number) const;
    const CodePage& codePageOf(int number, const CodePage& documentCodePage) const;

private:
    QHash<int, Font> m_fonts;
    int m_number = 0;
    int m_charset = 0;
    QString m_name;
};

/// One of the two color tables: the plain one, and the one with color spaces and opacity that refines it.
class ColorTable final
{
public:
    /// The next component of the entry that has begun: red, green, blue, opacity; 0 to 1.
    void addComponent(float component) { m_components.push_back(component); }

    /// The components are gray and opacity.
    void setGray() { m_gray = true; }

    /// The text is the name of a symbolic color.
    void setNamed() { m_named = true; }

    void append(QStringView text);

    /// An invalid color for the default one, and for an index that is not in the table.
    QColor color(int index) const;
    /// Entry @p index leaves the color to the desktop's theme (it is a symbolic text color).
    bool isThemeColor(int index) const;

private:
    struct Entry
    {
        QColor color;
        bool themed = false;
    };

    void endEntry();

    std::vector<Entry> m_entries;
    /// The components so far, each 0 to 1.
    std::vector<float> m_components;
    bool m_gray = false;
    bool m_named = false;
    QString m_text;
};

} // namespace Rtf
