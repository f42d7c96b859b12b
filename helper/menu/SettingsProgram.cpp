// SPDX-License-Identifier: MIT
#include "SettingsProgram.h"

#include <core/Changes.h>
#include <core/DocumentEntry.h>
#include <platform/bus/MessageBus.h>
#include <platform/desktop/Bundle.h>
#include <platform/desktop/ProcessLauncher.h>

#include <QFileInfo>
#include <QLoggingCategory>
#include <QStandardPaths>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.menu")

constexpr auto service = "com.blipsy.Settings";
/// A pane that is being started answers when it is up.
constexpr auto answerTimeout = 20s;
/// What was asked for longer ago than this is not shown any more.
constexpr qint64 longestStart = 60'000;

} // namespace

SettingsProgram::SettingsProgram(QObject* parent)
    : QObject(parent)
{
}

SettingsProgram::~SettingsProgram() = default;

void SettingsProgram::show(const QString& phrase)
{
    m_phrase = phrase;
    ask(true);
}

void SettingsProgram::ask(bool mayStart)
{
    const QString tab = m_phrase.isEmpty() ? u""_s : u"Phrases"_s;
    MessageBus::session().ask(
        {service, "/com/blipsy/Settings", service, "Show"}, {u""_s, tab, u""_s}, answerTimeout,
        [](const MessageBus::Arguments* reply) { return reply != nullptr; }, this,
        [this, mayStart](bool isShown) {
            if (!isShown && mayStart) {
                start();
            } else if (const QString phrase = std::exchange(m_phrase, {}); isShown && !phrase.isEmpty()) {
                Changes::tell(
                    NotificationName::scrollToAbb, PropertyList::Dictionary::create({{PhraseKey::phrase, phrase}}));
            }
        });
}

void SettingsProgram::start()
{
    const QString program = path();
    if (program.isEmpty()) {
        qCWarning(log).noquote() << "blipsy-settings is not installed";
        return;
    }
    ProcessLauncher::launch(program);
    m_sinceStart.start();
    if (!std::exchange(m_isFollowing, true)) {
        MessageBus::session().followService(service, this, [this](const QString& owner) {
            const bool isLate = m_sinceStart.hasExpired(longestStart);
            if (!owner.isEmpty() && !m_phrase.isEmpty() && !isLate) {
                ask(false);
            }
        });
    }
}

QString SettingsProgram::path()
{
    const QString inBuildFolder = Bundle::path() + u"/../host/blipsy-settings"_s;
    for (const QString& path : {inBuildFolder, QStringLiteral(BLIPSY_INSTALLED_SETTINGS)}) {
        if (QFileInfo(path).isExecutable()) {
            return QFileInfo(path).canonicalFilePath();
        }
    }
    return QStandardPaths::findExecutable(u"blipsy-settings"_s);
}
