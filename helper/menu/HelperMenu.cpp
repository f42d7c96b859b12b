// SPDX-License-Identifier: MIT
#include "HelperMenu.h"

#include "PhraseMenu.h"
#include "TrayIcon.h"

#include <core/Settings.h>
#include <platform/desktop/Text.h>

#include <QMessageBox>
#include <QStringList>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// What stands for the icon in the pane: a full arrow, or an empty one while the helper is paused.
const QString arrow = u"▾"_s;
const QString pausedArrow = u"▿"_s;

} // namespace

HelperMenu::HelperMenu(QObject* parent)
    : QObject(parent)
{
    addCommands();
    m_phraseMenu = new PhraseMenu(&m_menu, m_lastSeparator);
    connect(m_phraseMenu, &PhraseMenu::chosen, this, &HelperMenu::phraseChosen);
    setPaused(false);
}

HelperMenu::~HelperMenu() = default;

void HelperMenu::show()
{
    if (Settings::menuPref.value() == noIcon) {
        return;
    }
    m_icon = std::make_unique<TrayIcon>(m_menu);
    m_icon->setPaused(m_isPaused);
    showNotices();
    connect(m_icon.get(), &TrayIcon::shown, this, [this](bool isMenuDrawnByDesktop) {
        m_drawn = isMenuDrawnByDesktop ? MenuTitle::Drawn::ByDesktop : MenuTitle::Drawn::ByToolkit;
        fillPhrases();
    });
    m_icon->show();
}

void HelperMenu::addCommands()
{
    m_firstSeparator = m_menu.addSeparator();
    m_firstSeparator->setVisible(false);
    m_pause = m_menu.addAction({}, this, [this] { Q_EMIT pauseRequested(!m_isPaused); });
    m_menu.addAction(Text::tr("Add a Clipping…"), this, &HelperMenu::addRequested);
    m_menu.addAction(Text::tr("Edit Clippings…"), this, &HelperMenu::editRequested);
    m_menu.addSeparator();
    m_lastSeparator = m_menu.addSeparator();
    m_menu.addAction(Text::tr("About Blipsy"), this, &HelperMenu::showAbout);
    m_menu.addAction(Text::tr("Quit Blipsy"), this, &HelperMenu::quitRequested);
}

void HelperMenu::showPhrases(const std::shared_ptr<const PhraseListing>& listing)
{
    m_listing = listing;
    fillPhrases();
}

void HelperMenu::fillPhrases()
{
    // Without an icon nobody sees them.
    m_phraseMenu->fill(m_icon ? m_listing : nullptr, m_drawn);
    m_lastSeparator->setVisible(!m_phraseMenu->isEmpty());
}

void HelperMenu::setPaused(bool paused)
{
    m_isPaused = paused;
    m_pause->setText(paused ? Text::tr("Resume") : Text::tr("Pause"));
    if (m_icon) {
        m_icon->setPaused(paused);
    }
    if (const QString& shown = paused ? pausedArrow : arrow; Settings::arrowPref.value() != shown) {
        Settings::arrowPref.store(shown);
    }
}

void HelperMenu::setNotice(Notice notice, const QString& title, const QString& explanation)
{
    delete m_notices.take(notice);
    if (!title.isEmpty()) {
        auto* const item = new QAction(title, &m_menu);
        connect(item, &QAction::triggered, this,
            [this, title, explanation] { Q_EMIT explanationRequested(title, explanation); });
        const auto next = m_notices.upperBound(notice);
        m_menu.insertAction(next == m_notices.end() ? m_firstSeparator : *next, item);
        m_notices.insert(notice, item);
    }
    showNotices();
}

void HelperMenu::showNotices()
{
    m_firstSeparator->setVisible(!m_notices.isEmpty());
    if (m_icon) {
        QStringList titles;
        for (const QAction* const item : std::as_const(m_notices)) {
            titles.append(item->text());
        }
        m_icon->setNotices(titles);
    }
}

void HelperMenu::showAbout()
{
    auto* const box = new QMessageBox(QMessageBox::NoIcon, Text::tr("About Blipsy"),
        u"<b>Blipsy</b> "_s + QStringLiteral(BLIPSY_VERSION), QMessageBox::Ok);
    box->setInformativeText(Text::tr("Plays short sounds while you type and work."));
    box->setIconPixmap(TrayIcon::drawing(false).pixmap(48));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->show();
    box->raise();
    box->activateWindow();
}
