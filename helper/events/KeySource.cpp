// SPDX-License-Identifier: MIT
#include "KeySource.h"

#include <platform/input/InputWatcher.h>

#include <optional>

namespace {

std::optional<EventCode> eventOf(const KeyMeaning& meaning)
{
    using Key = KeyMeaning::Key;
    if (meaning.isShortcut) {
        return EventCode::ShortcutPressed;
    }
    switch (meaning.key) {
    case Key::Return:
        return EventCode::ReturnPressed;
    case Key::Tab:
        return EventCode::TabPressed;
    case Key::BackSpace:
    case Key::Delete:
        return EventCode::DeletePressed;
    case Key::Escape:
        return EventCode::EscapePressed;
    case Key::Left:
    case Key::Right:
    case Key::Up:
    case Key::Down:
        return EventCode::ArrowKeyPressed;
    case Key::Silent:
        return {};
    case Key::Character:
    case Key::Other:
        break;
    }
    return meaning.text.view() == u" " ? EventCode::SpaceBarPressed : EventCode::KeyPressed;
}

} // namespace

KeySource::KeySource(InputWatcher& input, QObject* parent)
    : EventSource(parent)
    , m_input(input)
{
}

void KeySource::start()
{
    connect(&m_input, &InputWatcher::keyPressed, this, &KeySource::takeKey);
    connect(&m_input, &InputWatcher::capsLockChanged, this,
        [this](bool isOn) { tell(isOn ? EventCode::CapsLockOn : EventCode::CapsLockOff); });
}

void KeySource::takeKey(const KeyPress& press)
{
    const std::optional<EventCode> event = press.isRepeat ? std::nullopt : eventOf(press.meaning);
    if (event) {
        tell(*event);
    }
}
