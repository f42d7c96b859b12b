// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <memory>

class BusProperties;

/// Tells whether the user's session is the one in front of the machine, by the login manager. Where there is none it
/// counts as in front, and nothing is told.
class SessionFront final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SessionFront)

public:
    SessionFront();
    ~SessionFront() override;

    /// Begins; changed() follows once it is known, and at every change.
    void follow();

Q_SIGNALS:
    void changed(bool isInFront);

private:
    void followSession(const QByteArray& path);

    std::unique_ptr<BusProperties> m_session;
};
