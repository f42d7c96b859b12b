// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>

/// The pop-up that offers documents and commands. Whatever is chosen is carried out at once, so that nothing is chosen
/// while the list is closed: the keys with which a combo box walks through its items open the list, a typed character
/// finds its item there, and the wheel goes to whatever scrolls the page.
class DocumentsPopUpButton final : public QComboBox
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(DocumentsPopUpButton)

public:
    explicit DocumentsPopUpButton(QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};
