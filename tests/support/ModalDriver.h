// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

#include <functional>

/// Answers modal panels and alerts as a person does: waits until one is up, then acts on it.
class ModalDriver final : public QObject
{
public:
    using Act = std::function<void(QWidget*)>;

    /// Runs @p act on the next modal widget that comes up. One that @p act leaves up for too long is closed with a
    /// warning: a test that fails inside a modal run must not stay there.
    explicit ModalDriver(Act act)
        : m_act(std::move(act))
    {
        connect(&m_timer, &QTimer::timeout, this, &ModalDriver::look);
        m_timer.start(10);
    }

    bool wasAnswered() const { return m_answered; }

    /// An act that clicks the button with this text (mnemonics aside).
    static Act click(const QString& text)
    {
        return [text](QWidget* modal) {
            const QList<QPushButton*> buttons = modal->findChildren<QPushButton*>();
            for (QPushButton* button : buttons) {
                if (button->text().remove(u'&') == text) {
                    button->click();
                    return;
                }
            }
            qWarning("no button called %s", qPrintable(text));
            dismiss(modal);
        };
    }

private:
    /// Ends also what refuses to be closed.
    static void dismiss(QWidget* modal)
    {
        if (auto* const dialog = qobject_cast<QDialog*>(modal)) {
            dialog->reject();
        }
    }

    void look()
    {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal == nullptr || !modal->isVisible()) {
            return;
        }
        m_timer.stop();
        m_answered = true;
        QTimer::singleShot(patienceMilliseconds, this, [modal = QPointer(modal)] {
            if (modal && modal->isVisible()) {
                qWarning("nobody answered %s", qPrintable(modal->windowTitle()));
                dismiss(modal);
            }
        });
        m_act(modal);
    }

    static constexpr int patienceMilliseconds = 20'000;

    Act m_act;
    QTimer m_timer;
    bool m_answered = false;
};
