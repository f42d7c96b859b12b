// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bytes/Result.h>

#include <QTextEdit>

/// A text editor that is either plain or rich, with the operations that a text is loaded and saved with.
///
/// Rich text holds fonts, colors, alignment, links and files; its stored form is flattened RTFD. Pictures and files
/// that are pasted or dropped are taken into the text with their bytes and names. A picture is decoded when it is
/// drawn; other files show the icon of their kind and their name.
class TextView : public QTextEdit
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(TextView)

public:
    explicit TextView(QWidget* parent = nullptr);

    bool isRichText() const { return m_richText; }

    /// Plain text pastes and drops as plain text. Does not change the text that is there.
    void setRichText(bool rich);

    /// Whether pictures and files can be pasted and dropped into rich text.
    void setImportsGraphics(bool imports) { m_importsGraphics = imports; }

    bool importsGraphics() const { return m_importsGraphics; }

    /// The text, attachments as U+FFFC, paragraphs separated by line feeds.
    QString string() const;
    /// Replaces the whole text by plain @p text. Not undoable; sends no change.
    void setString(const QString& text);
    /// Inserts at the insertion point, replacing the selection, as typing does: with the formats there, but beside a
    /// picture as text. Does nothing while the view is read-only.
    void insertText(const QString& text);
    /// Replaces the whole text by flattened RTFD, or bare RTF; tells what was odd in it. When none is found the text
    /// stays. Not undoable; sends no change.
    Result<QStringList> replaceAllWithRTFD(const QByteArray& rtfd);
    /// The whole text as flattened RTFD.
    QByteArray RTFDFromAll() const;
    /// The font of plain text: the system's at 12 points.
    static QFont systemFont();
    /// The system font and the text color, and no other format, for the whole text and for what is typed next. Not
    /// undoable; sends no change. docs/decisions/plain-text-attributes.md tells why nobody is asked what to keep.
    void resetAttributes();
    /// Gives the whole text, and what is typed next, the font @p font. Sends no change.
    void setFontOfAll(const QFont& font);

    /// The user's choice of @p format, for the selection or for what is typed next. Sends a change of the typing
    /// attributes, and one of the text where text is selected.
    void applyCharacterFormat(const QTextCharFormat& format);
    /// The user's choice of the side of the selected paragraphs, whichever way their text runs: `Qt::AlignLeft`,
    /// `Qt::AlignRight`, `Qt::AlignHCenter` or `Qt::AlignJustify`. Sends the same changes.
    void applySide(Qt::Alignment side);

    /// Also answers for the pictures of attachments.
    QVariant loadResource(int type, const QUrl& name) override;

Q_SIGNALS:
    /// The user has changed the text.
    void textDidChange();
    /// The attributes of what is typed next have changed through the user's choice of formats.
    void typingAttributesDidChange();
    /// The text is rich now, or plain.
    void richTextChanged(bool rich);

protected:
    QMimeData* createMimeDataFromSelection() const override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    bool insertRichText(const QMimeData& source);
    bool insertPicture(const QMimeData& source);
    bool insertFiles(const QMimeData& source);
    bool insertFile(const QString& path);
    void insertAttachment(const QString& name, const QByteArray& contents);
    void showFilesReadably();
    void finishReplacing();

    bool m_richText = false;
    bool m_importsGraphics = false;
};
