#include "SettingsWindow.h"

#include <QCoreApplication>
#include <QDir>
#include <QPixmap>
#include <QSettings>
#include <QTextStream>

#include <PreferencePane.h>

using namespace Qt::StringLiterals;

namespace {

const QString geometryKey = u"window/geometry"_s;

} // namespace

SettingsWindow::SettingsWindow(PreferencePane& pane)
    : m_pane(pane)
{
    setWindowTitle(u"Blipsy"_s);
    setCentralWidget(pane.loadMainView());
    centralWidget()->setFocus();
    resize(QSize(860, 680).expandedTo(sizeHint()));
    restoreGeometry(QSettings().value(geometryKey).toByteArray());
}

SettingsWindow::~SettingsWindow()
{
    // The view belongs to the pane.
    if (QWidget* view = takeCentralWidget()) {
        view->setParent(nullptr);
    }
}

bool SettingsWindow::saveScreenshots(const QString& folder)
{
    if (!QDir().mkpath(folder)) {
        return false;
    }
    QTextStream out(stdout);
    const QStringList names = m_pane.tabNames();
    for (const QString& name : names) {
        m_pane.selectTab(name);
        QCoreApplication::processEvents();
        const QString path = QDir(folder).absoluteFilePath(name + u".png"_s);
        if (!grab().save(path)) {
            return false;
        }
        out << path << Qt::endl;
    }
    return true;
}

void SettingsWindow::closeEvent(QCloseEvent* event)
{
    m_pane.willUnselect();
    QSettings().setValue(geometryKey, saveGeometry());
    QMainWindow::closeEvent(event);
}
