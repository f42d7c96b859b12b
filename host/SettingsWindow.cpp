// SPDX-License-Identifier: MIT
#include "SettingsWindow.h"

#include <pane/interface/PreferencePane.h>

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QPixmap>
#include <QSettings>
#include <QTextStream>

#include <utility>

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

void SettingsWindow::present(const QString& document, const QString& tab, const QString& activationToken)
{
    if (!m_wanted) {
        m_wanted = Wanted();
    }
    // The last start that names one has its way.
    m_wanted->document = document.isEmpty() ? m_wanted->document : document;
    m_wanted->tab = tab.isEmpty() ? m_wanted->tab : tab;

    if (!activationToken.isEmpty()) {
        qputenv("XDG_ACTIVATION_TOKEN", activationToken.toUtf8());
    }
    QWidget* const dialog = QApplication::activeModalWidget();
    QWidget* const front = dialog != nullptr ? dialog->window() : this;
    setWindowState(windowState() & ~Qt::WindowMinimized);
    front->raise();
    front->activateWindow();
    // Whoever asked gets the answer first: a document may have a question about unsaved text to ask.
    QMetaObject::invokeMethod(this, &SettingsWindow::showWanted, Qt::QueuedConnection);
}

void SettingsWindow::showWanted()
{
    if (!m_wanted || QApplication::activeModalWidget() != nullptr) {
        return;
    }
    const Wanted wanted = *std::exchange(m_wanted, std::nullopt);
    if (!wanted.document.isEmpty()) {
        m_pane.openDocument(wanted.document);
    }
    if (!wanted.tab.isEmpty()) {
        m_pane.selectTab(wanted.tab);
    }
}

bool SettingsWindow::event(QEvent* event)
{
    if (event->type() == QEvent::WindowUnblocked) {
        QMetaObject::invokeMethod(this, &SettingsWindow::showWanted, Qt::QueuedConnection);
    }
    return QMainWindow::event(event);
}

void SettingsWindow::closeEvent(QCloseEvent* event)
{
    m_pane.willUnselect();
    if (m_wanted) {
        // Somebody asked for the window while it had a last question.
        event->ignore();
        return;
    }
    QSettings().setValue(geometryKey, saveGeometry());
    QMainWindow::closeEvent(event);
}
