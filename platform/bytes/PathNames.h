// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

class QUrl;

/// The path of the file that @p url names, on whatever machine, without a slash at its end; empty for what names none.
QString pathOfFileUrl(const QUrl& url);

/// Questions about paths as texts. The answers are views into @p path.

/// The path without the slashes at its end; "/" stays.
QStringView withoutEndSlash(QStringView path);

/// The name of what @p path leads to: what stands after its last slash, slashes at its end apart. The root folder's
/// name is "/"; a text without a slash is a name as a whole.
QStringView lastPathComponent(QStringView path);
