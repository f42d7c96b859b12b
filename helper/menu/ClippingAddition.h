// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <memory>

class QDialog;

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

    /// A program that has the selection and does not answer holds this up, for five seconds at most.
    void begin();

Q_SIGNALS:
    /// What is typed is typed into the dialog, and is to set nothing off.
    void asking(bool isAsking);
    /// The document has another phrase, in memory and on the disk.
    void added();

private:
    static QString selectedText();
    void end(int result);

    std::unique_ptr<QDialog> m_dialog;
};
