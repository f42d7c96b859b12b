// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QDateTime;

/// Replaces @p text by what it says today: first every stamp ("[[0]]" to "[[9]]", "[[:]]") by the calendar format it
/// stands for, then every conversion of the whole text, read as one calendar format, by the current date and time. The
/// stamps of the user's own formats are read from the user's defaults, else from the session's locale.
void parseNSStringStamp4strftime(QString& text);

/// The same for another moment.
void parseNSStringStamp4strftime(QString& text, const QDateTime& moment);

/// @p moment by a calendar format, with the names and formats of the user's settings.
QString descriptionWithCalendarFormat(const QString& format, const QDateTime& moment);
