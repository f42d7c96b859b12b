// SPDX-License-Identifier: MIT
#include "FormattingBar.h"

#include <platform/desktop/Text.h>
#include <platform/richtext/CharacterSize.h>
#include <platform/richtext/ParagraphSide.h>
#include <platform/richtext/TextView.h>

#include <QButtonGroup>
#include <QColorDialog>
#include <QEvent>
#include <QFontComboBox>
#include <QHBoxLayout>
#include <QPainter>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTextBlock>
#include <QToolButton>

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr int iconSize = 16;
constexpr qreal smallestPoints = 4;
constexpr qreal largestPoints = 288;

QPixmap emptyIcon(const QWidget& widget)
{
    const qreal scale = widget.devicePixelRatioF();
    QPixmap pixmap(QSize(iconSize, iconSize) * scale);
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    return pixmap;
}

/// Four lines of text on one side.
QIcon sideIcon(const QWidget& widget, Qt::Alignment side)
{
    constexpr std::array<int, 4> widths{14, 9, 12, 7};
    QPixmap pixmap = emptyIcon(widget);
    QPainter painter(&pixmap);
    for (int line = 0; const int natural : widths) {
        const int width = side == Qt::AlignJustify && line < 3 ? 14 : natural;
        const int left = side == Qt::AlignRight ? 15 - width : side == Qt::AlignHCenter ? (iconSize - width) / 2 : 1;
        painter.fillRect(left, 2 + 3 * line++, width, 2, widget.palette().buttonText());
    }
    return pixmap;
}

/// A letter over a bar of the text's color.
QIcon colorIcon(const QWidget& widget, const QColor& color)
{
    QPixmap pixmap = emptyIcon(widget);
    QPainter painter(&pixmap);
    QFont font = widget.font();
    font.setPixelSize(11);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(widget.palette().buttonText().color());
    painter.drawText(QRect(0, 0, iconSize, 12), Qt::AlignCenter, u"A"_s);
    painter.fillRect(1, 12, 14, 3, color);
    return pixmap;
}

} // namespace

FormattingBar::FormattingBar(QWidget* parent)
    : QWidget(parent)
{
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    addFontControls(*layout);
    addStyleButtons(*layout);
    addColorButton(*layout);
    addSideButtons(*layout);
    layout->addStretch();
    drawIcons();
    hide();
}

void FormattingBar::addFontControls(QHBoxLayout& layout)
{
    m_font = new QFontComboBox(this);
    m_font->setObjectName(u"fontFamily"_s);
    m_font->setAccessibleName(Text::tr("Font"));
    m_font->setToolTip(Text::tr("Font"));
    m_font->setFocusPolicy(Qt::StrongFocus);
    m_font->setMinimumContentsLength(10);
    m_font->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    layout.addWidget(m_font, 1);
    connect(m_font, &QComboBox::textActivated, this, [this](const QString& family) {
        QTextCharFormat format;
        format.setFontFamilies({family});
        apply(format);
    });

    m_size = new QComboBox(this);
    m_size->setObjectName(u"fontSize"_s);
    m_size->setAccessibleName(Text::tr("Font size"));
    m_size->setToolTip(Text::tr("Font size in points"));
    m_size->setFocusPolicy(Qt::StrongFocus);
    m_size->setEditable(true);
    m_size->setInsertPolicy(QComboBox::NoInsert);
    for (const int points : {9, 10, 11, 12, 13, 14, 16, 18, 20, 24, 28, 36, 48, 64, 72}) {
        m_size->addItem(QString::number(points));
    }
    layout.addWidget(m_size);
    connect(m_size, &QComboBox::textActivated, this, &FormattingBar::applySize);
}

QToolButton* FormattingBar::addButton(
    QHBoxLayout& layout, const QString& name, const QString& text, const QString& toolTip)
{
    auto* const button = new QToolButton(this);
    button->setObjectName(name);
    button->setText(text);
    button->setToolTip(toolTip);
    button->setAccessibleName(toolTip);
    button->setCheckable(true);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setIconSize(QSize(iconSize, iconSize));
    button->setMinimumWidth(button->sizeHint().height());
    layout.addWidget(button);
    return button;
}

void FormattingBar::addStyleButtons(QHBoxLayout& layout)
{
    using Change = void (*)(QTextCharFormat&, bool);
    const auto add = [this, &layout](const QString& name, const QString& text, const QString& toolTip,
                         void (QFont::*setSample)(bool), Change change) {
        QToolButton* const button = addButton(layout, name, text, toolTip);
        QFont sample = font();
        (sample.*setSample)(true);
        button->setFont(sample);
        connect(button, &QToolButton::clicked, this, [this, change](bool on) {
            QTextCharFormat format;
            change(format, on);
            apply(format);
        });
        return button;
    };
    m_bold = add(u"bold"_s, Text::tr("B"), Text::tr("Bold"), &QFont::setBold,
        [](auto& format, bool on) { format.setFontWeight(on ? QFont::Bold : QFont::Normal); });
    m_italic = add(u"italic"_s, Text::tr("I"), Text::tr("Italic"), &QFont::setItalic,
        [](auto& format, bool on) { format.setFontItalic(on); });
    m_underline = add(u"underline"_s, Text::tr("U"), Text::tr("Underline"), &QFont::setUnderline,
        [](auto& format, bool on) { format.setFontUnderline(on); });
    m_strike = add(u"strike"_s, Text::tr("S"), Text::tr("Strikethrough"), &QFont::setStrikeOut,
        [](auto& format, bool on) { format.setFontStrikeOut(on); });
}

void FormattingBar::addColorButton(QHBoxLayout& layout)
{
    m_color = addButton(layout, u"color"_s, QString(), Text::tr("Text color"));
    m_color->setCheckable(false);
    connect(m_color, &QToolButton::clicked, this, &FormattingBar::chooseColor);
}

void FormattingBar::addSideButtons(QHBoxLayout& layout)
{
    layout.addSpacing(4);
    auto* const group = new QButtonGroup(this);
    const auto add = [this, &layout, group](const QString& name, const QString& toolTip, Qt::Alignment side) {
        QToolButton* const button = addButton(layout, name, QString(), toolTip);
        group->addButton(button);
        m_sides.append({button, side});
        connect(button, &QToolButton::clicked, this, [this, side] {
            m_view->applySide(side);
            m_view->setFocus();
        });
    };
    add(u"alignLeft"_s, Text::tr("Align left"), Qt::AlignLeft);
    add(u"alignCenter"_s, Text::tr("Center"), Qt::AlignHCenter);
    add(u"alignRight"_s, Text::tr("Align right"), Qt::AlignRight);
    add(u"justify"_s, Text::tr("Justify"), Qt::AlignJustify);
}

void FormattingBar::setTextView(TextView* view)
{
    m_view = view;
    setVisible(view->isRichText());
    connect(view, &TextView::richTextChanged, this, &QWidget::setVisible);
    connect(view, &QTextEdit::currentCharFormatChanged, this, &FormattingBar::follow);
    connect(view, &QTextEdit::cursorPositionChanged, this, &FormattingBar::follow);
    addShortcut(m_bold, QKeySequence::Bold);
    addShortcut(m_italic, QKeySequence::Italic);
    addShortcut(m_underline, QKeySequence::Underline);
    follow();
}

void FormattingBar::addShortcut(QToolButton* button, const QKeySequence& keys)
{
    auto* const shortcut = new QShortcut(keys, m_view, nullptr, nullptr, Qt::WidgetShortcut);
    button->setToolTip(button->accessibleName() + u" ("_s + keys.toString(QKeySequence::NativeText) + u')');
    connect(shortcut, &QShortcut::activated, button, [this, button] {
        if (m_view->isRichText()) {
            button->click();
        }
    });
}

void FormattingBar::apply(const QTextCharFormat& format)
{
    m_view->applyCharacterFormat(format);
    m_view->setFocus();
}

void FormattingBar::applySize(const QString& text)
{
    bool isNumber = false;
    const qreal points = locale().toDouble(text, &isNumber);
    if (!isNumber || points < smallestPoints || points > largestPoints) {
        follow();
        return;
    }
    QTextCharFormat format;
    format.setFontPointSize(points);
    apply(format);
}

void FormattingBar::chooseColor()
{
    const QColor color = QColorDialog::getColor(m_view->textColor(), this, Text::tr("Text color"));
    if (color.isValid() && m_view) {
        QTextCharFormat format;
        format.setForeground(color);
        apply(format);
        drawIcons();
    }
}

void FormattingBar::follow()
{
    const QTextCharFormat format = m_view->currentCharFormat();
    const QFont font = format.font().resolve(m_view->document()->defaultFont());
    const QSignalBlocker quiet(m_font);
    m_font->setCurrentFont(font);
    m_size->setEditText(locale().toString(pointSizeOf(format, m_view->document()->defaultFont())));
    m_bold->setChecked(font.bold());
    m_italic->setChecked(font.italic());
    m_underline->setChecked(font.underline());
    m_strike->setChecked(font.strikeOut());
    const Qt::Alignment side = ParagraphSide::of(m_view->textCursor().block());
    for (const SideButton& button : m_sides) {
        button.button->setChecked(button.side == side);
    }
    drawIcons();
}

void FormattingBar::drawIcons()
{
    for (const SideButton& button : m_sides) {
        button.button->setIcon(sideIcon(*this, button.side));
    }
    const QBrush foreground = m_view ? m_view->currentCharFormat().foreground() : QBrush();
    m_color->setIcon(
        colorIcon(*this, foreground.style() == Qt::NoBrush ? palette().buttonText().color() : foreground.color()));
}

void FormattingBar::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_color != nullptr) {
        drawIcons();
    }
}
