// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QString>

#include <chrono>

/// Whether files exist, asked so often that the file system must not be: an answer holds for two seconds.
class FileExistence final
{
public:
    /// Whether there is a file or folder at @p path, links followed.
    bool exists(const QString& path);

private:
    using Clock = std::chrono::steady_clock;

    struct Answer
    {
        bool exists;
        Clock::time_point time;
    };

    QHash<QString, Answer> m_answers;
};
