// SPDX-License-Identifier: MIT
#include "ClippingAddition.h"

#include "AddClippingDialog.h"

#include <platform/typist/SelectionReader.h>

#include <QClipboard>
#include <QGuiApplication>

#include <utility>

ClippingAddition::ClippingAddition(QObject* parent)
    : QObject(parent)
{
}

ClippingAddition::~ClippingAddition() = default;

void ClippingAddition::begin()
{
    if (m_dialog) {
        present();
    } else if (!m_reader) {
        // The selection of an X server beside a Wayland compositor is that of its own programs.
        m_reader = qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ? nullptr : SelectionReader::ofSession();
        if (!m_reader) {
            ask(QGuiApplication::clipboard()->text(), false);
            return;
        }
        connect(m_reader.get(), &SelectionReader::finished, this, &ClippingAddition::take);
        m_unread = {"CLIPBOARD", "PRIMARY"};
        readNext();
    }
}

void ClippingAddition::readNext()
{
    const QByteArray selection = m_unread.back();
    m_unread.pop_back();
    m_reader->readText(selection);
}

void ClippingAddition::take(const std::optional<SelectionContents>& contents)
{
    const QString text = contents ? SelectionReader::textOf(*contents) : QString();
    // What is on the clipboard is not what the user wanted when that is just slow in coming.
    if (contents && text.isEmpty() && !m_unread.empty()) {
        readNext();
        return;
    }
    // Its own signal is being handled.
    m_reader.release()->deleteLater();
    ask(text, !contents);
}

void ClippingAddition::ask(const QString& text, bool isUnreadable)
{
    auto dialog = std::make_unique<AddClippingDialog>(text.left(longestText));
    if (isUnreadable) {
        dialog->tellTextIsUnreadable();
    }
    m_dialog = std::move(dialog);
    // The user works with another program, over whose windows the dialog has to come.
    m_dialog->setWindowFlag(Qt::WindowStaysOnTopHint);
    connect(m_dialog.get(), &QDialog::finished, this, &ClippingAddition::end);
    Q_EMIT asking(true);
    present();
}

void ClippingAddition::present()
{
    m_dialog->show();
    m_dialog->raise();
    m_dialog->activateWindow();
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
