// SPDX-License-Identifier: MIT
#include "TrayIcon.h"

#include <platform/desktop/Bundle.h>
#include <platform/desktop/Text.h>

#include <QCursor>
#include <QMenu>
#include <QPixmap>
#include <QSystemTrayIcon>

using namespace Qt::StringLiterals;

TrayIcon::TrayIcon(QMenu& menu, QObject* parent)
    : QObject(parent)
    , m_menu(menu)
{
    connect(&m_place, &TrayPlace::found, this, &TrayIcon::showAt);
}

TrayIcon::~TrayIcon() = default;

void TrayIcon::show()
{
    m_place.look();
}

void TrayIcon::setPaused(bool paused)
{
    m_isPaused = paused;
    present();
}

void TrayIcon::setNotices(const QStringList& notices)
{
    m_notices = notices;
    present();
}

QIcon TrayIcon::drawing(bool paused)
{
    const QIcon source(Bundle::resourcePath() + (paused ? u"/helperPaused.svg"_s : u"/helper.svg"_s));
    QIcon icon;
    // Panels ask for one of these; a drawing scaled by the desktop would be blurred.
    for (const int size : {16, 22, 24, 32, 48, 64}) {
        icon.addPixmap(source.pixmap(size));
    }
    return icon;
}

/// The toolkit decides once for a process between the two kinds, so that the icon is made only when there is a place.
void TrayIcon::showAt(TrayPlace::Kind kind)
{
    if (m_icon) {
        return;
    }
    m_icon = std::make_unique<QSystemTrayIcon>();
    m_icon->setContextMenu(&m_menu);
    const bool isDrawnByDesktop = kind == TrayPlace::Kind::StatusNotifier;
    if (!isDrawnByDesktop) {
        connect(m_icon.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
            if (reason == QSystemTrayIcon::Trigger) {
                m_menu.popup(QCursor::pos());
            }
        });
    }
    present();
    m_icon->show();
    Q_EMIT shown(isDrawnByDesktop);
}

void TrayIcon::present()
{
    if (m_icon) {
        m_icon->setIcon(drawing(m_isPaused));
        const QString name = m_isPaused ? Text::tr("Blipsy is paused") : u"Blipsy"_s;
        m_icon->setToolTip((QStringList(name) + m_notices).join(u'\n'));
    }
}
