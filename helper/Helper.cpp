// SPDX-License-Identifier: MIT
#include "Helper.h"

#include <platform/input/InputWatcher.h>

#include <QCoreApplication>
#include <QLoggingCategory>

namespace {

Q_LOGGING_CATEGORY(log, "blipsy.helper")

} // namespace

Helper::Helper()
{
    connectContract();
}

Helper::~Helper() = default;

void Helper::start()
{
    m_contract.begin();
}

void Helper::connectContract()
{
    connect(&m_contract, &HelperContract::begun, this, &Helper::begin);
    connect(&m_contract, &HelperContract::refused, this, [] {
        qCWarning(log, "not started: another helper runs in this session, or there is no session bus");
        QCoreApplication::quit();
    });
    connect(&m_contract, &HelperContract::lost, this, [] {
        qCWarning(log, "the session bus is gone: this is the end");
        QCoreApplication::quit();
    });
    connect(&m_contract, &HelperContract::changed, &m_document, &HelperDocument::reload);
    connect(&m_contract, &HelperContract::eventRequested, this, [this](int code) { m_sounds.playEvent(code); });
    connect(&m_contract, &HelperContract::suitcaseRequested, this,
        [this](const QString& path) { m_sounds.playSuitcase(path); });
}

void Helper::begin()
{
    HelperSounds::prepare();
    m_document.reload();
    watchTyping();
}

void Helper::watchTyping()
{
    m_input = InputWatcher::ofSession();
    if (!m_input) {
        HelperContract::tellTypingIsUnseen();
        return;
    }
    connect(m_input.get(), &InputWatcher::ended, &m_contract, &HelperContract::tellTypingIsUnseen);
}
