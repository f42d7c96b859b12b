// SPDX-License-Identifier: MIT
#include "PlainToolTip.h"

#include <QHelpEvent>
#include <QMenu>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostCharacters = 1000;
constexpr const char* textProperty = "plainToolTip";

class ToolTipFilter final : public QObject
{
public:
    explicit ToolTipFilter(QMenu& menu)
        : QObject(&menu)
        , m_menu(menu)
    {
        menu.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched != &m_menu || event->type() != QEvent::ToolTip) {
            return false;
        }
        const auto* help = static_cast<QHelpEvent*>(event);
        const QAction* item = m_menu.actionAt(help->pos());
        const QString text = item ? item->property(textProperty).toString() : QString();
        QToolTip::showText(help->globalPos(), PlainToolTip::shown(text), &m_menu);
        return true;
    }

private:
    QMenu& m_menu;
};

} // namespace

QString PlainToolTip::shown(const QString& text)
{
    if (text.isEmpty()) {
        return {};
    }
    const QString part = text.size() > mostCharacters ? text.first(mostCharacters) + u'\u2026' : text;
    return u"<p style='white-space:pre-wrap'>"_s + part.toHtmlEscaped() + u"</p>"_s;
}

void PlainToolTip::setOn(QAction& item, const QString& text)
{
    item.setToolTip(text);
    item.setProperty(textProperty, text);
}

void PlainToolTip::useIn(QMenu& menu)
{
    new ToolTipFilter(menu);
}
