// SPDX-License-Identifier: MIT
#pragma once

#include <platform/desktop/TrayPlace.h>

#include <QIcon>
#include <QObject>
#include <QStringList>

#include <memory>

class QMenu;
class QSystemTrayIcon;

/// The helper's icon among the desktop's status icons. It comes when there is a place for it, be that after the start
/// of the helper, and tells by its drawing whether the helper is paused.
class TrayIcon final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(TrayIcon)

public:
    /// Shows nothing before show(). @p menu stays its owner's and outlives this.
    explicit TrayIcon(QMenu& menu, QObject* parent = nullptr);
    ~TrayIcon() override;

    void show();
    void setPaused(bool paused);
    /// What the tool tip says below the name, a line each.
    void setNotices(const QStringList& notices);

    /// The drawing in the sizes of panels.
    static QIcon drawing(bool paused);

Q_SIGNALS:
    /// The icon is there; the desktop draws the menu itself, or leaves it to the toolkit.
    void shown(bool isMenuDrawnByDesktop);

private:
    void showAt(TrayPlace::Kind kind);
    void present();

    QMenu& m_menu;
    TrayPlace m_place;
    std::unique_ptr<QSystemTrayIcon> m_icon;
    QStringList m_notices;
    bool m_isPaused = false;
};
