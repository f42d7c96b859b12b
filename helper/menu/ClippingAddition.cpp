// SPDX-License-Identifier: MIT
#include "ClippingAddition.h"

#include "AddClippingDialog.h"

#include <QClipboard>
#include <QGuiApplication>

ClippingAddition::ClippingAddition(QObject* parent)
    : QObject(parent)
{
}

ClippingAddition::~ClippingAddition() = default;

void ClippingAddition::begin()
{
    if (!m_dialog) {
        m_dialog = std::make_unique<AddClippingDialog>(selectedText());
        // The user works with another program, over whose windows the dialog has to come.
        m_dialog->setWindowFlag(Qt::WindowStaysOnTopHint);
        connect(m_dialog.get(), &QDialog::finished, this, &ClippingAddition::end);
        Q_EMIT asking(true);
    }
    m_dialog->show();
    m_dialog->raise();
    m_dialog->activateWindow();
}

QString ClippingAddition::selectedText()
{
    const QClipboard* const clipboard = QGuiApplication::clipboard();
    QString text = clipboard->supportsSelection() ? clipboard->text(QClipboard::Selection) : QString();
    if (text.isEmpty()) {
        text = clipboard->text();
    }
    return text.left(longestText);
}

void ClippingAddition::end(int result)
{
    // Its own signal is being handled.
    m_dialog.release()->deleteLater();
    Q_EMIT asking(false);
    if (result == QDialog::Accepted) {
        Q_EMIT added();
    }
}
