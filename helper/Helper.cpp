// SPDX-License-Identifier: MIT
#include "Helper.h"

#include <core/Phrase.h>
#include <helper/events/EventCode.h>
#include <helper/events/EventSources.h>
#include <helper/insertion/TextInsertion.h>
#include <helper/typing/TypedPhrases.h>
#include <platform/bus/LoginSession.h>
#include <platform/windows/WindowWatcher.h>

#include <QCoreApplication>

Helper::Helper(HelperContract& contract)
    : m_contract(contract)
{
    connectContract();
    connectCommands();
}

Helper::~Helper() = default;

void Helper::connectContract()
{
    connect(&m_contract, &HelperContract::changed, this, &Helper::readSettings);
    connect(&m_contract, &HelperContract::changed, &m_document, &HelperDocument::reload);
    connect(&m_contract, &HelperContract::typingHeld, &m_commands, &UserCommands::setHeldByPane);
    connect(&m_contract, &HelperContract::eventRequested, this, [this](int code) { m_sounds.playEvent(code); });
    connect(&m_contract, &HelperContract::suitcaseRequested, this,
        [this](const QString& path) { m_sounds.playSuitcase(path); });
}

void Helper::connectCommands()
{
    connect(&m_commands, &UserCommands::phraseAdded, &m_document, &HelperDocument::reload);
    connect(&m_commands, &UserCommands::phraseChosen, this, &Helper::playPhrase);
    connect(&m_commands, &UserCommands::paused, &m_talk, &Talk::setPaused);
    connect(&m_commands, &UserCommands::paused, this, [this](bool isPaused) { m_sounds.setPaused(isPaused); });
    connect(&m_commands, &UserCommands::quitRequested, qApp, &QCoreApplication::quit, Qt::QueuedConnection);
}

void Helper::connectDocument()
{
    connect(&m_document, &HelperDocument::reloaded, this, [this] {
        m_typing->setPhrases(m_document.index());
        m_commands.showPhrases(m_document.listing());
    });
    // An event of the very start has a sound only with the document.
    connect(&m_document, &HelperDocument::settled, this, &Helper::watchDesktop, Qt::SingleShotConnection);
    connect(&m_document, &HelperDocument::settled, &m_contract, &HelperContract::concludeChange);
}

void Helper::begin()
{
    HelperSounds::prepare();
    m_commands.begin();
    watchTyping();
    connectDocument();
    readSettings();
    m_document.reload();
}

void Helper::readSettings()
{
    m_commands.readSettings();
    m_talk.readSettings();
    m_typing->readSettings();
}

void Helper::watchTyping()
{
    m_windows = WindowWatcher::ofSession();
    auto obstacle = InputWatcher::Obstacle::None;
    m_input = InputWatcher::ofSession(&obstacle);
    insertTexts();
    m_typing = std::make_unique<TypedPhrases>(m_input.get(), m_windows.get());
    connect(&m_contract, &HelperContract::typingHeld, m_typing.get(),
        [this](bool isHeld) { m_typing->hold(TypedPhrases::Holder::Pane, isHeld); });
    connect(&m_commands, &UserCommands::paused, m_typing.get(),
        [this](bool isPaused) { m_typing->hold(TypedPhrases::Holder::User, isPaused); });
    connect(&m_commands, &UserCommands::asking, m_typing.get(),
        [this](bool isAsking) { m_typing->hold(TypedPhrases::Holder::Dialog, isAsking); });
    connect(&m_passwordFocus, &PasswordFocus::changed, m_typing.get(),
        [this](bool isSecret) { m_typing->hold(TypedPhrases::Holder::SecretField, isSecret); });
    m_passwordFocus.follow();
    connect(&m_sessionFront, &SessionFront::locked, m_typing.get(),
        [this](bool isLocked) { m_typing->hold(TypedPhrases::Holder::Locker, isLocked); });
    // The clock of the pause after which it forgets stands still while the machine sleeps.
    LoginSession::followSleep(m_typing.get(), [this](bool) { m_typing->forgetAll(); });
    connect(m_typing.get(), &TypedPhrases::completed, this,
        [this](const CompletedPhrase& phrase) { playPhrase(phrase.entry); });
    connect(m_typing.get(), &TypedPhrases::completed, m_insertion.get(), &TextInsertion::replace);
    tellLimits(obstacle);
    if (m_input) {
        connect(&m_sessionFront, &SessionFront::changed, m_input.get(), &InputWatcher::setInFront);
        connect(m_input.get(), &InputWatcher::ended, this, [this] { tellLimits(InputWatcher::Obstacle::NoDisplay); });
        m_sessionFront.follow();
    }
}

/// Before anything looks for phrases in what is typed: see TextInsertion::Session.
void Helper::insertTexts()
{
    const auto frontmostClass = [this] {
        const auto window = m_windows ? m_windows->active() : std::nullopt;
        return window ? window->windowClass : QString();
    };
    const auto documents = [this] { return std::vector{m_typing->phrases(), m_document.phrases()}; };
    m_insertion = std::make_unique<TextInsertion>(TextInsertion::Session{m_input.get(), frontmostClass, documents});
    connect(&m_commands, &UserCommands::phraseChosen, m_insertion.get(),
        [this](const PropertyList::DictionaryPointer& entry) { m_insertion->insert(entry); });
}

void Helper::tellLimits(InputWatcher::Obstacle obstacle)
{
    if (obstacle != InputWatcher::Obstacle::None) {
        HelperContract::tellTypingIsUnseen();
    }
    m_commands.tellLimits({obstacle, m_insertion->isAvailable()});
}

void Helper::playPhrase(const PropertyList::DictionaryPointer& entry)
{
    if (const QString path = Phrase(entry).soundFilepath(); !path.isEmpty()) {
        m_sounds.playPhrase(path);
        m_sounds.playEvent(int(EventCode::PhrasePlayed));
    }
    m_commands.setLastPhrase(Phrase(entry).phrase());
}

void Helper::watchDesktop()
{
    m_events = std::make_unique<EventSources>(m_input.get(), m_windows.get(), nullptr);
    connect(m_events.get(), &EventSources::happened, this, [this](int code) { m_sounds.playEvent(code); });
    m_events->start();
}
