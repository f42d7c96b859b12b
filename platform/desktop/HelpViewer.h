// SPDX-License-Identifier: MIT
#pragma once

class QString;

/// Shows help books (folders of HTML pages) in the desktop's browser.
namespace HelpViewer {

/// There is no book at that place.
inline constexpr int bookNotFoundError = -10791;
/// The desktop has no program that shows it.
inline constexpr int viewerNotFoundError = -10790;

/// Opens the book @p bookName at its start page. A book is a folder that has its name, among those in @p booksFolder;
/// its start page is `index.html`. The browser starts by itself; nothing waits for it. 0, or one of the error codes
/// above.
int openBook(const QString& bookName, const QString& booksFolder);

} // namespace HelpViewer
