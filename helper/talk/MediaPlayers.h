// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bus/MessageBus.h>

#include <QObject>
#include <QString>

#include <map>
#include <memory>

/// The media players of the session, and the tracks that they start (public source: MPRIS D-Bus Interface
/// Specification 2.2). What plays already when this begins is no news.
class MediaPlayers final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(MediaPlayers)

public:
    /// Of the players that come, so many are followed at a time.
    static constexpr size_t mostPlayers = 16;

    explicit MediaPlayers(QObject* parent = nullptr);
    ~MediaPlayers() override;

Q_SIGNALS:
    /// Texts as the player gives them; @p artist may be empty, several are joined by commas.
    void trackStarted(const QString& title, const QString& artist);

private:
    class Player;

    void follow(const QString& name, bool isNew);
    void takeOwnerChange(const MessageBus::Arguments& arguments);

    /// By their names on the bus.
    std::map<QString, std::unique_ptr<Player>> m_players;
};
