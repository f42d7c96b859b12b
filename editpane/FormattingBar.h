// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QWidget>

class QComboBox;
class QFontComboBox;
class QHBoxLayout;
class QTextCharFormat;
class QToolButton;
class TextView;

/// The formats of a rich text: font, size, bold, italic, underline, strikethrough, color and the side of its
/// paragraphs.
///
/// The bar follows the insertion point of its text view, and is hidden while that is plain.
class FormattingBar final : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(FormattingBar)

public:
    explicit FormattingBar(QWidget* parent = nullptr);

    /// The view stays its owner's. Its shortcuts Ctrl+B, Ctrl+I and Ctrl+U work from now on while it is rich.
    void setTextView(TextView* view);

protected:
    void changeEvent(QEvent* event) override;

private:
    struct SideButton
    {
        QToolButton* button;
        /// As ParagraphSide tells it.
        Qt::Alignment side;
    };

    void addFontControls(QHBoxLayout& layout);
    void addStyleButtons(QHBoxLayout& layout);
    void addColorButton(QHBoxLayout& layout);
    void addSideButtons(QHBoxLayout& layout);
    QToolButton* addButton(QHBoxLayout& layout, const QString& name, const QString& text, const QString& toolTip);
    void addShortcut(QToolButton* button, const QKeySequence& keys);

    void apply(const QTextCharFormat& format);
    void applySize(const QString& text);
    void chooseColor();
    void follow();
    void drawIcons();

    QPointer<TextView> m_view;
    QFontComboBox* m_font = nullptr;
    QComboBox* m_size = nullptr;
    QToolButton* m_bold = nullptr;
    QToolButton* m_italic = nullptr;
    QToolButton* m_underline = nullptr;
    QToolButton* m_strike = nullptr;
    QToolButton* m_color = nullptr;
    QList<SideButton> m_sides;
};
