// SPDX-License-Identifier: MIT
#include "HelpViewer.h"

#include <product/Product.h>

#include <QDesktopServices>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace HelpViewer {

namespace {

Q_LOGGING_CATEGORY(log, PRODUCT_NAME ".help")

} // namespace

int openBook(const QString& bookName, const QString& booksFolder)
{
    const QString startPage = booksFolder + u'/' + bookName + u"/index.html"_s;
    if (!QFileInfo::exists(startPage)) {
        qCWarning(log).noquote() << "The help book" << bookName << "has no start page" << startPage;
        return bookNotFoundError;
    }
    return QDesktopServices::openUrl(QUrl::fromLocalFile(startPage)) ? 0 : viewerNotFoundError;
}

} // namespace HelpViewer
