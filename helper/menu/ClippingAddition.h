// SPDX-License-Identifier: MIT
#pragma once

#include <platform/typist/SelectionContents.h>

#include <QByteArray>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

class QDialog;
class SelectionReader;

/// "Add a Clipping": takes the text that is selected in whatever program, else the clipboard's, and asks the user for
/// the phrase. One dialog at a time: a second request brings the first to the front.
class ClippingAddition final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ClippingAddition)

public:
    /// Longer texts are cut, in UTF-16 units: they would make the document unwieldy.
    static constexpr qsizetype longestText = 1'000'000;

    explicit ClippingAddition(QObject* parent = nullptr);
    ~ClippingAddition() override;

    /// The dialog opens when the selection has been read, after a moment at most: where the program that has it does
    /// not answer, or has more than could be read, it opens without a text.
    void begin();

Q_SIGNALS:
    /// What is typed is typed into the dialog, and is to set nothing off.
    void asking(bool isAsking);
    /// The document has another phrase, in memory and on the disk.
    void added();

private:
    void readNext();
    void take(const std::optional<SelectionContents>& contents);
    void ask(const QString& text, bool isUnreadable);
    void present();
    void end(int result);

    /// Null when nothing is being read.
    std::unique_ptr<SelectionReader> m_reader;
    /// The selections that are still to be read, the next one last.
    std::vector<QByteArray> m_unread;
    std::unique_ptr<QDialog> m_dialog;
};
