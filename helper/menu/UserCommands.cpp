// SPDX-License-Identifier: MIT
#include "UserCommands.h"

#include <platform/desktop/Text.h>

using namespace Qt::StringLiterals;

UserCommands::UserCommands(QObject* parent)
    : QObject(parent)
    , m_notification(u"com.blipsy.Settings"_s)
{
    connect(&m_menu, &HelperMenu::pauseRequested, this, &UserCommands::setPaused);
    connect(&m_hotKeys, &HotKeys::pauseRequested, this, [this] { setPaused(!m_isPaused); });
    connect(&m_menu, &HelperMenu::addRequested, &m_addition, &ClippingAddition::begin);
    connect(&m_hotKeys, &HotKeys::addRequested, &m_addition, &ClippingAddition::begin);
    connect(&m_menu, &HelperMenu::editRequested, this, [this] { m_settings.show(m_lastPhrase); });
    connect(&m_hotKeys, &HotKeys::editRequested, this, [this] { m_settings.show(m_lastPhrase); });
    connect(&m_menu, &HelperMenu::phraseChosen, this, &UserCommands::phraseChosen);
    connect(&m_menu, &HelperMenu::quitRequested, this, &UserCommands::quitRequested);
    connect(&m_menu, &HelperMenu::explanationRequested, this,
        [this](const QString& title, const QString& explanation) { m_notification.show(title, explanation); });
    connect(&m_hotKeys, &HotKeys::refusedChanged, this, &UserCommands::showRefusedHotKeys);
    connect(&m_addition, &ClippingAddition::asking, this, &UserCommands::asking);
    connect(&m_addition, &ClippingAddition::added, this, &UserCommands::phraseAdded);
}

UserCommands::~UserCommands() = default;

void UserCommands::begin()
{
    m_menu.show();
    m_hotKeys.readSettings();
}

void UserCommands::tellLimits(const SessionLimits& limits)
{
    const SessionLimits::Explanation typing = limits.ofTyping();
    const SessionLimits::Explanation texts = limits.ofTexts();
    m_menu.setNotice(HelperMenu::Notice::Typing, typing.title, typing.text);
    m_menu.setNotice(HelperMenu::Notice::Texts, texts.title, texts.text);
    if (const SessionLimits::Explanation all = limits.together(); !all.title.isEmpty()) {
        m_notification.show(all.title, all.text);
    }
}

void UserCommands::setPaused(bool isPaused)
{
    m_isPaused = isPaused;
    m_menu.setPaused(isPaused);
    Q_EMIT paused(isPaused);
}

void UserCommands::showRefusedHotKeys()
{
    const QString names = m_hotKeys.refused().join(u", "_s);
    m_menu.setNotice(HelperMenu::Notice::HotKeys,
        names.isEmpty() ? QString() : Text::tr("Hot keys of another program: %1").arg(names),
        Text::tr("Another program holds the keys. Choose others in the settings, under Options."));
}
