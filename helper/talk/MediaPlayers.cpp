// SPDX-License-Identifier: MIT
#include "MediaPlayers.h"

#include <platform/bus/BusProperties.h>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto bus = "org.freedesktop.DBus";
constexpr auto answerTimeout = 2s;
const QString playerPrefix = u"org.mpris.MediaPlayer2."_s;

/// One text, or a list of them.
QString joined(const PropertyList::Value& value)
{
    const PropertyList::ArrayPointer list = value.array();
    if (!list) {
        return value.string();
    }
    QStringList texts;
    for (const PropertyList::Value& text : std::as_const(*list)) {
        texts.append(text.string());
    }
    return texts.join(u", "_s);
}

} // namespace

class MediaPlayers::Player final : public QObject
{
public:
    /// @p isNew: it has come just now, and what it plays first is news.
    Player(const QString& name, bool isNew, MediaPlayers& players)
        : m_players(players)
        , m_properties(MessageBus::session(),
              {name.toUtf8(), "/org/mpris/MediaPlayer2", "org.mpris.MediaPlayer2.Player",
                  {u"Metadata"_s, u"PlaybackStatus"_s}},
              nullptr)
    {
        connect(&m_properties, &BusProperties::known, this, [this, isNew] { look(isNew); });
        connect(&m_properties, &BusProperties::changed, this, [this] { look(true); });
        m_properties.follow();
    }

private:
    struct Track
    {
        QString title;
        QString artist;

        bool operator==(const Track&) const = default;
    };

    void look(bool isNews)
    {
        const QString status = m_properties.value(u"PlaybackStatus").string();
        if (status == u"Stopped") {
            m_track = {};
        }
        const PropertyList::DictionaryPointer metadata = m_properties.value(u"Metadata").dictionary();
        if (status != u"Playing" || !metadata) {
            return;
        }
        // A pause within a track, or another picture of it, starts no other one.
        const Track track{joined(metadata->value(u"xesam:title")), joined(metadata->value(u"xesam:artist"))};
        if (!track.title.isEmpty() && std::exchange(m_track, track) != track && isNews) {
            Q_EMIT m_players.trackStarted(track.title, track.artist);
        }
    }

    MediaPlayers& m_players;
    BusProperties m_properties;
    Track m_track;
};

MediaPlayers::MediaPlayers(QObject* parent)
    : QObject(parent)
{
    MessageBus& session = MessageBus::session();
    session.subscribe({bus, "/org/freedesktop/DBus", bus, "NameOwnerChanged"}, this,
        [this](const MessageBus::Signal& signal) { takeOwnerChange(signal.arguments); });
    session.request({bus, "/org/freedesktop/DBus", bus, "ListNames"}, {}, answerTimeout, this,
        [this](const MessageBus::Arguments* reply) {
            const PropertyList::ArrayPointer names =
                reply != nullptr && !reply->empty() ? reply->front().array() : PropertyList::ArrayPointer();
            for (qsizetype i = 0; names && i < names->size(); ++i) {
                follow(names->at(i).string(), false);
            }
        });
}

MediaPlayers::~MediaPlayers() = default;

void MediaPlayers::follow(const QString& name, bool isNew)
{
    if (name.startsWith(playerPrefix) && !m_players.contains(name) && m_players.size() < mostPlayers) {
        m_players.emplace(name, std::make_unique<Player>(name, isNew, *this));
    }
}

/// The name, its owner before, and its owner now.
void MediaPlayers::takeOwnerChange(const MessageBus::Arguments& arguments)
{
    if (arguments.size() != 3) {
        return;
    }
    const QString name = arguments[0].string();
    if (arguments[2].string().isEmpty()) {
        m_players.erase(name);
    } else {
        follow(name, true);
    }
}
