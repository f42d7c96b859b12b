// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>

#include <chrono>
#include <memory>

class BusProperties;
class IdleAlarm;

/// Tells when the user has been idle for some time: from the X server where the session is its own, else from the
/// session manager (logind's IdleHint, which the desktop sets after some minutes of its own). Event-driven.
class IdleTime final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(IdleTime)

public:
    explicit IdleTime(QObject* parent = nullptr);
    ~IdleTime() override;

    /// reached() comes after @p time without input, once for each time that the user is idle; never for 0 or less.
    void setLimit(std::chrono::milliseconds time);

Q_SIGNALS:
    void reached();

private:
    void takeHint();

    std::unique_ptr<IdleAlarm> m_alarm;
    std::unique_ptr<BusProperties> m_hint;
    /// What is left of the time when the session manager speaks up.
    QTimer m_rest;
    std::chrono::milliseconds m_limit{0};
};
