// SPDX-License-Identifier: MIT
#include "AddClippingDialog.h"

#include "PhraseAddition.h"
#include "TrayIcon.h"

#include <platform/desktop/Text.h>

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

AddClippingDialog::AddClippingDialog(const QString& text, QWidget* parent)
    : QDialog(parent)
    , m_phrase(new QLineEdit(this))
    , m_text(new QPlainTextEdit(this))
    , m_problem(new QLabel(this))
    , m_buttons(new QDialogButtonBox(QDialogButtonBox::Cancel, this))
{
    setWindowTitle(Text::tr("Add a Clipping"));
    setWindowIcon(TrayIcon::drawing(false));
    QPushButton* const add = m_buttons->addButton(Text::tr("&Add"), QDialogButtonBox::AcceptRole);
    add->setDefault(true);

    m_phrase->setPlaceholderText(Text::tr("What you will type"));
    m_phrase->setAccessibleDescription(Text::tr("What you will type"));
    m_text->setPlainText(text);
    m_text->setTabChangesFocus(true);
    m_problem->setWordWrap(true);
    m_problem->setTextFormat(Qt::PlainText);
    // Room for it from the start: the dialog does not jump when there is something to say.
    m_problem->setMinimumHeight(m_problem->fontMetrics().height());

    auto* const form = new QFormLayout;
    form->addRow(Text::tr("&Phrase:"), m_phrase);
    form->addRow(Text::tr("&Text:"), m_text);
    form->addRow(QString(), m_problem);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_buttons);
    resize(420, 260);

    connect(m_phrase, &QLineEdit::textChanged, this, &AddClippingDialog::check);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &AddClippingDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &AddClippingDialog::reject);
    m_phrase->setFocus();
}

void AddClippingDialog::tellTextIsUnreadable()
{
    m_text->setPlaceholderText(Text::tr("The selected text could not be read. Copy it, and paste it here."));
}

void AddClippingDialog::accept()
{
    const Result<void> added = PhraseAddition::add(phrase(), m_text->toPlainText());
    if (added) {
        QDialog::accept();
    } else {
        showProblem(added.error());
        m_phrase->setFocus();
    }
}

QString AddClippingDialog::phrase() const
{
    return m_phrase->text().trimmed();
}

/// That nothing has been typed yet needs not be said before the user asks for more.
void AddClippingDialog::check()
{
    showProblem(phrase().isEmpty() ? QString() : PhraseAddition::problemWith(phrase()));
}

void AddClippingDialog::showProblem(const QString& problem)
{
    m_problem->setText(problem);
    m_phrase->setAccessibleDescription(problem.isEmpty() ? Text::tr("What you will type") : problem);
}
