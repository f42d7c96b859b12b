// SPDX-License-Identifier: MIT
#pragma once

#include <core/Phrase.h>

#include <QObject>

class Matrix;
class TextView;
class QWidget;

/// What becomes of a phrase's text in the edit pane: it is loaded, changed, asked about and saved. The one owner of the
/// Save button and of BYGlobals::editEntryPaneTextIsDirty().
class EditSession final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(EditSession)

public:
    /// The views of the edit pane. They belong to the interface and outlive the session; one that is null is left out.
    struct Views
    {
        TextView* text = nullptr;
        QWidget* save = nullptr;
        /// One row: plain text in column 0, rich text in column 1.
        Matrix* plainOrRich = nullptr;
        QWidget* dateTime = nullptr;
        QWidget* textFormatting = nullptr;
    };

    explicit EditSession(const Views& views, QObject* parent = nullptr);

    /// Shows the text of the phrase at @p row; row -1 hides the views. Either way there is nothing to save.
    void load(int row);
    /// Shows no text, and nothing to save.
    void clear();

    /// Whether the text differs from what is stored; Save can be pressed accordingly.
    bool isDirty() const;
    void setDirty(bool dirty);
    /// Lets Save be pressed, even where nothing has changed.
    void offerSave();
    /// The user has changed how what is typed next looks, which counts in rich text only.
    void typingAttributesDidChange();

    /// Asks what becomes of the unsaved text of @p phrase; whether it is to be saved. Without a text view nothing is.
    bool confirmSave(const QString& phrase) const;

    /// What Save in the question stores in @p phrase: the text as "SoundFilepath", rich when the text view is. Needs a
    /// text view.
    void saveAfterQuestion(const Phrase& phrase) const;
    /// What the Save button stores in @p phrase: the text as "Plain Text", rich when the switch says so. Then there is
    /// nothing to save. Needs a text view.
    void saveByButton(const Phrase& phrase);

private:
    void loadText(const Phrase& phrase);
    std::optional<QByteArray> formatting(bool isRich) const;
    bool isRichChosen() const;

    Views m_views;
};
