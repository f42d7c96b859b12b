// SPDX-License-Identifier: MIT
#include "FrontmostWindow.h"

#include <QApplication>
#include <QVariant>
#include <QWidget>

#include <algorithm>

namespace {

bool isSheet(const QWidget* window)
{
    const bool belongsToOneWindow = window->windowType() == Qt::Sheet || window->windowModality() == Qt::WindowModal;
    return belongsToOneWindow && window->parentWidget();
}

/// Neither a menu, a tool tip or another passing thing.
bool isDocumentWindow(const QWidget* window)
{
    return window->isVisible() && (window->windowType() == Qt::Window || isSheet(window));
}

QWidget* frontmost()
{
    QWidget* const active = QApplication::activeWindow();
    if (active && isDocumentWindow(active)) {
        return active;
    }
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto found = std::find_if(windows.begin(), windows.end(), isDocumentWindow);
    return found == windows.end() ? nullptr : *found;
}

} // namespace

QWidget* FrontmostWindow::documentWindow()
{
    if (!qobject_cast<QApplication*>(QCoreApplication::instance())) {
        return nullptr;
    }
    QWidget* window = frontmost();
    while (window && isSheet(window)) {
        window = window->parentWidget()->window();
    }
    return window;
}

quint32 FrontmostWindow::referenceConstant(const QWidget* window)
{
    return window->property(referenceConstantProperty).toUInt();
}
