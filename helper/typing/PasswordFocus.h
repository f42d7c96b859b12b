// SPDX-License-Identifier: MIT
#pragma once

#include <platform/bus/BusProperties.h>
#include <platform/bus/MessageBus.h>

#include <QObject>
#include <QString>

#include <memory>

/// Tells when a field that hides what is typed has the keyboard, where the accessibility bus runs and is switched on
/// (public source: AT-SPI 2, and org.a11y.Status). It switches nothing on: programs ask at their start whether it is,
/// and it is the user's to decide (docs/decisions/password-field.md).
class PasswordFocus final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PasswordFocus)

public:
    PasswordFocus();
    ~PasswordFocus() override;

    /// Begins; silent as long as the accessibility bus is absent or off.
    void follow();

Q_SIGNALS:
    /// Such a field has the keyboard, or may have: of one that has just got it that is said until its program has
    /// answered, for half a second at most.
    void changed(bool isSecret);

private:
    void takeStatus();
    void listen(const QByteArray& address);
    void leave();
    void takeState(const MessageBus::Signal& signal);
    void askForRole(const QString& program, const QString& path);
    void tell(bool isSecret);

    BusProperties m_status;
    /// Null while it is off.
    std::unique_ptr<MessageBus> m_bus;
    /// Of what is asked and heard on that bus.
    std::unique_ptr<QObject> m_context;
    /// What has the keyboard, by its program's name on the bus and its path there.
    QString m_focus;
    bool m_isSecret = false;
};
