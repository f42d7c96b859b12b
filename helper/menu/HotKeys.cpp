// SPDX-License-Identifier: MIT
#include "HotKeys.h"

#include <PTHotKeysLib/src/PTHotKeyCenter.h>
#include <core/Settings.h>
#include <platform/desktop/Text.h>
#include <platform/keyboard/HotKeyGrabs.h>

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;

HotKeys::HotKeys(QObject* parent)
    : QObject(parent)
    , m_center(PTHotKeyCenter::sharedCenter())
{
    // The names are the settings' keys, so they are those of the pane.
    addHotKey(0, Text::tr("Add a Clipping"), &HotKeys::addRequested);
    addHotKey(1, Text::tr("Edit Clippings"), &HotKeys::editRequested);
    addHotKey(2, Text::tr("Pause/Resume"), &HotKeys::pauseRequested);
    connect(&m_center, &PTHotKeyCenter::systemEvent, this,
        [](const CarbonEvent& event) { hotKeyEventHandler(nullptr, event, nullptr); });
    m_keyboardSettled.setSingleShot(true);
    m_keyboardSettled.setInterval(50ms);
    connect(&m_center, &PTHotKeyCenter::keyboardChanged, &m_keyboardSettled, qOverload<>(&QTimer::start));
    connect(&m_keyboardSettled, &QTimer::timeout, this, &HotKeys::reserve);
}

HotKeys::~HotKeys()
{
    for (const PTHotKey::Pointer& hotKey : m_hotKeys) {
        m_center.unregisterHotKey(hotKey);
    }
    tellRefused({});
}

void HotKeys::addHotKey(size_t index, const QString& name, void (HotKeys::*requested)())
{
    m_hotKeys[index] = std::make_shared<PTHotKey>(name, std::nullopt);
    m_hotKeys[index]->setName(name);
    m_hotKeys[index]->setTarget(this);
    m_hotKeys[index]->setAction([this, requested](PTHotKey*) { Q_EMIT(this->*requested)(); });
}

void HotKeys::readSettings()
{
    bool isChanged = !m_refused.isEmpty();
    for (const PTHotKey::Pointer& hotKey : m_hotKeys) {
        const auto combo = PTKeyCombo::initWithPlistRepresentation(Settings::stored(hotKey->name()).dictionary());
        isChanged = isChanged || combo != hotKey->keyCombo();
        hotKey->setKeyCombo(combo);
    }
    if (isChanged) {
        reserve();
    }
}

void HotKeys::setHeld(bool held)
{
    m_isHeld = held;
    reserve();
}

void HotKeys::reserve()
{
    QStringList refused;
    for (const PTHotKey::Pointer& hotKey : m_hotKeys) {
        m_center.unregisterHotKey(hotKey);
    }
    const bool isWanted = std::ranges::any_of(
        m_hotKeys, [](const PTHotKey::Pointer& hotKey) { return hotKey->keyCombo().isValidHotKeyCombo(); });
    if (m_isHeld || (isWanted && !HotKeyGrabs::arePossible())) {
        return;
    }
    for (const PTHotKey::Pointer& hotKey : m_hotKeys) {
        if (!m_center.registerHotKey(hotKey)) {
            refused.append(hotKey->name());
        }
    }
    tellRefused(refused);
}

void HotKeys::tellRefused(const QStringList& names)
{
    if (names != Settings::refusedHotKeys.value().value_or(QStringList())) {
        Settings::refusedHotKeys.store(names);
    }
    if (names != m_refused) {
        m_refused = names;
        Q_EMIT refusedChanged();
    }
}
