// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include <memory>

struct xcb_connection_t;

/// The desktop's place for status icons: the StatusNotifierItem protocol (freedesktop.org) on the session bus, or the
/// classic System Tray protocol of the X server. Panels often start after the programs of the session, so both are
/// waited for, event by event. Main thread only.
class TrayPlace final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(TrayPlace)

public:
    enum class Kind { StatusNotifier, Classic };

    explicit TrayPlace(QObject* parent = nullptr);
    ~TrayPlace() override;

    /// Begins to look.
    void look();

Q_SIGNALS:
    /// There is a place; told once, on the first that is found. The bus is asked first.
    void found(TrayPlace::Kind kind);

private:
    struct Disconnect
    {
        void operator()(xcb_connection_t* connection) const;
    };

    void askNotifierHost();
    void lookForClassic();
    bool hasClassicOwner() const;
    void readEvents();
    void tell(Kind kind);

    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    quint32 m_selection = 0;
    bool m_isFound = false;
};
