// SPDX-License-Identifier: MIT
#pragma once

#include "ui_PrintClippingsWindow.h"

#include <QDialog>

/// The print window: a preview of the document's phrases with a button that prints and one that closes.
class PrintClippingsWindow final : public QDialog
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PrintClippingsWindow)

public:
    explicit PrintClippingsWindow(QWidget* parent = nullptr);

    const Ui::PrintClippingsWindow& form() const { return m_form; }

    /// Shows the window in front, with the phrases as they are now.
    void present();

private:
    /// Asks for a printer and prints. The window stays up when the user cancels, and when printing fails, which is
    /// logged and told.
    void print();

    Ui::PrintClippingsWindow m_form;
};
