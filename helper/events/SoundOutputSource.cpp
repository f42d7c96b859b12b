// SPDX-License-Identifier: MIT
#include "SoundOutputSource.h"

#include <algorithm>
#include <array>
#include <utility>

SoundOutputSource::SoundOutputSource(QObject* parent)
    : EventSource(parent)
    , m_server(this)
{
}

void SoundOutputSource::start()
{
    connect(&m_server, &SoundServerNews::volumeChanged, this, [this] { tell(EventCode::VolumeChanged); });
    connect(&m_server, &SoundServerNews::headphonesPlugged, this,
        [this](bool isPlugged) { tell(isPlugged ? EventCode::HeadphonesPluggedIn : EventCode::HeadphonesUnplugged); });
    connect(&m_server, &SoundServerNews::eventSoundPlayed, this, &SoundOutputSource::takeEventSound);
    m_server.start();
}

void SoundOutputSource::takeEventSound(const QString& name)
{
    static constexpr std::array<std::pair<QStringView, EventCode>, 6> sounds{{
        {u"dialog-error", EventCode::ErrorReported},
        {u"dialog-question", EventCode::QuestionAsked},
        {u"menu-click", EventCode::MenuItemChosen},
        {u"message-sent-instant", EventCode::MessageSent},
        {u"message-sent-email", EventCode::MailSent},
        {u"phone-hangup", EventCode::CallEnded},
    }};
    const auto* const sound = std::ranges::find(sounds, QStringView(name), &std::pair<QStringView, EventCode>::first);
    if (sound != sounds.end()) {
        tell(sound->second);
    }
}
