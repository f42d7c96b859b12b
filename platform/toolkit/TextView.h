#pragma once

#include <QTextEdit>

/// A text editor that is either plain or rich, with the operations that a text is loaded and saved with.
///
/// Rich text holds fonts, colours, alignment and pictures; its stored form is flattened RTFD.
class TextView : public QTextEdit
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(TextView)

public:
    explicit TextView(QWidget* parent = nullptr);

    bool isRichText() const { return m_richText; }
    /// Plain text pastes and drops as plain text. Does not change the text that is there.
    void setRichText(bool rich);
    void setImportsGraphics(bool imports) { m_importsGraphics = imports; }
    bool importsGraphics() const { return m_importsGraphics; }

    /// The text, attachments as U+FFFC, paragraphs separated by line feeds.
    QString string() const;
    /// Replaces the whole text by plain @p text. Not undoable; sends no change.
    void setString(const QString& text);
    /// Inserts at the insertion point, replacing the selection, as typing does.
    void insertText(const QString& text);
    /// Replaces the whole text by flattened RTFD. False when nothing could be read from it (the text is then empty).
    bool replaceAllWithRTFD(const QByteArray& rtfd);
    /// The whole text as flattened RTFD.
    QByteArray RTFDFromAll() const;
    /// The system font at 12 points and the text colour, for the whole text and for what is typed next.
    void resetAttributes();

Q_SIGNALS:
    /// The user has changed the text.
    void textDidChange();
    /// The attributes of what is typed next have changed through the user's choice of formats.
    void typingAttributesDidChange();

protected:
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    bool m_richText = false;
    bool m_importsGraphics = false;
};
