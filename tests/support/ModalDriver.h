#pragma once

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTimer>

#include <functional>

/// Answers modal panels and alerts as a person does: waits until one is up, then acts on it.
class ModalDriver final : public QObject
{
public:
    using Act = std::function<void(QWidget*)>;

    /// Runs @p act on the next modal widget that comes up. Without one within five seconds it gives up, and
    /// wasAnswered() stays false.
    explicit ModalDriver(Act act)
        : m_act(std::move(act))
    {
        m_patience.start();
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
            modal->close();
        };
    }

private:
    void look()
    {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal == nullptr || !modal->isVisible()) {
            if (m_patience.hasExpired(5'000)) {
                m_timer.stop();
            }
            return;
        }
        m_timer.stop();
        m_answered = true;
        m_act(modal);
    }

    Act m_act;
    QTimer m_timer;
    QElapsedTimer m_patience;
    bool m_answered = false;
};
