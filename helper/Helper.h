// SPDX-License-Identifier: MIT
#pragma once

#include "HelperContract.h"
#include "HelperDocument.h"
#include "HelperSounds.h"
#include "SessionFront.h"

#include <helper/menu/UserCommands.h>
#include <helper/talk/Talk.h>
#include <helper/typing/PasswordFocus.h>
#include <platform/input/InputWatcher.h>

#include <QObject>

#include <memory>

class EventSources;
class TextInsertion;
class TypedPhrases;
class WindowWatcher;

/// The helper put together: makes its parts and connects them, and does nothing else. Each part is silent where the
/// session does not have what it needs.
class Helper final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Helper)

public:
    /// Once @p contract has begun: a helper that is one too many makes no part at all. It outlives this.
    explicit Helper(HelperContract& contract);
    ~Helper() override;

    /// Reads settings and document, and listens: to the desktop once the document is there.
    void begin();

private:
    void connectContract();
    void connectCommands();
    void connectDocument();
    void readSettings();
    void watchTyping();
    void insertTexts();
    void tellLimits(InputWatcher::Obstacle obstacle);
    /// A phrase that was typed, or chosen in the menu, is heard.
    void playPhrase(const PropertyList::DictionaryPointer& entry);
    void watchDesktop();

    HelperContract& m_contract;
    HelperDocument m_document;
    HelperSounds m_sounds{m_document};
    UserCommands m_commands;
    Talk m_talk;
    /// Null where nothing that is typed can be seen.
    std::unique_ptr<InputWatcher> m_input;
    /// Null without an X server.
    std::unique_ptr<WindowWatcher> m_windows;
    std::unique_ptr<EventSources> m_events;
    std::unique_ptr<TextInsertion> m_insertion;
    /// Null before the contract has begun.
    std::unique_ptr<TypedPhrases> m_typing;
    PasswordFocus m_passwordFocus;
    SessionFront m_sessionFront;
};
