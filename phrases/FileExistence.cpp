// SPDX-License-Identifier: MIT
#include "FileExistence.h"

#include <QFileInfo>

using namespace std::chrono_literals;

namespace {

constexpr auto answerHolds = 2s;
/// More than any screen shows at once.
constexpr qsizetype mostAnswers = 1000;

} // namespace

bool FileExistence::exists(const QString& path)
{
    const Clock::time_point now = Clock::now();
    if (const auto known = m_answers.constFind(path); known != m_answers.cend() && now - known->time < answerHolds) {
        return known->exists;
    }
    if (m_answers.size() >= mostAnswers) {
        m_answers.clear();
    }
    const bool exists = QFileInfo::exists(path);
    m_answers.insert(path, {exists, now});
    return exists;
}
