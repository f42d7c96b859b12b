#pragma once

#include <QStringView>

/// The name of what @p path leads to: what stands after its last slash, slashes at its end apart. The root folder's
/// name is "/"; a text without a slash is a name as a whole. A view into @p path.
QStringView lastPathComponent(QStringView path);
