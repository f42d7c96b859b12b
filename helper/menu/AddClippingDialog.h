// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;

/// Asks for the phrase under which a text is to be added. It stays open until the phrase has been added or the user
/// gives up.
class AddClippingDialog final : public QDialog
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(AddClippingDialog)

public:
    /// @p text can be changed by the user.
    explicit AddClippingDialog(const QString& text, QWidget* parent = nullptr);

    /// Says where the text should be that there was one, but that it could not be read.
    void tellTextIsUnreadable();

    /// Adds the phrase as it stands, unless there is a problem with it, which is then shown.
    void accept() override;

private:
    QString phrase() const;
    void check();
    void showProblem(const QString& problem);

    QLineEdit* m_phrase;
    QPlainTextEdit* m_text;
    QLabel* m_problem;
    QDialogButtonBox* m_buttons;
};
