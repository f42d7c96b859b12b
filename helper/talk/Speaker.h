// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

/// Speaks through the desktop's speech service, where one runs: the daemon speech-dispatcher, by its protocol SSIP
/// (public source: "SSIP: Speech Synthesis Interface Protocol"). It is not started for it, and nothing waits.
class Speaker final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Speaker)

public:
    explicit Speaker(QObject* parent = nullptr);
    ~Speaker() override;

    /// Speaks a plain text of whoever, in the language of the user's texts, the first @ref longestText of it. What has
    /// not reached the service by then is dropped.
    void say(const QString& text);

    /// In UTF-16 units: some 20 seconds.
    static constexpr qsizetype longestText = 300;

private:
    /// One text on its way.
    QPointer<QObject> m_conversation;
};
