// SPDX-License-Identifier: MIT
#include "AssistiveClicks.h"

#include "Matrix.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QCheckBox>
#include <QKeySequence>
#include <QRadioButton>
#include <QRegularExpression>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

/// A check box, radio button or tool button.
class ClickedButton final : public QAccessibleWidget
{
public:
    ClickedButton(QAbstractButton* button, QAccessible::Role role)
        : QAccessibleWidget(button, role)
        , m_button(button)
    {
    }

    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Accelerator) {
            return m_button->shortcut().toString(QKeySequence::NativeText);
        }
        const QString given = QAccessibleWidget::text(kind);
        static const QRegularExpression mnemonic(u"&(.)"_s);
        return kind == QAccessible::Name && given.isEmpty() ? m_button->text().replace(mnemonic, u"\\1"_s) : given;
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = m_button->isCheckable();
        state.checked = m_button->isChecked();
        state.pressed = m_button->isDown();
        return state;
    }

    QStringList actionNames() const override
    {
        return (m_button->isEnabled() ? QStringList{clickAction()} : QStringList()) + QAccessibleWidget::actionNames();
    }

    void doAction(const QString& name) override
    {
        if (name == clickAction()) {
            m_button->animateClick();
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

    QStringList keyBindingsForAction(const QString& name) const override
    {
        return name == clickAction() ? QStringList{text(QAccessible::Accelerator)}
                                     : QAccessibleWidget::keyBindingsForAction(name);
    }

private:
    // Buttons become checkable after they have been made.
    const QString& clickAction() const { return m_button->isCheckable() ? toggleAction() : pressAction(); }

    // The toolkit forgets this object when the button goes.
    QAbstractButton* m_button;
};

QAccessibleInterface* make(const QString& className, QObject* object)
{
    if (className == u"QCheckBox") {
        return new ClickedButton(qobject_cast<QCheckBox*>(object), QAccessible::CheckBox);
    }
    if (className == u"QRadioButton") {
        return new ClickedButton(qobject_cast<QRadioButton*>(object), QAccessible::RadioButton);
    }
    if (auto* const button = qobject_cast<QToolButton*>(object);
        className == u"QToolButton" && button->menu() == nullptr) {
        return new ClickedButton(button, QAccessible::Button);
    }
    if (className == u"Matrix") {
        return new QAccessibleWidget(qobject_cast<Matrix*>(object), QAccessible::Grouping);
    }
    return nullptr;
}

} // namespace

void AssistiveClicks::install()
{
    QAccessible::installFactory(make);
}
