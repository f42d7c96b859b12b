// SPDX-License-Identifier: MIT
#include "PTHotKeyCenter.h"

#include "InternalInconsistency.h"

#include <QCoreApplication>
#include <QPointer>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 signature = 0x57713448; // 'Wq4H'
constexpr int eventParameterNotFoundError = -9870;

InternalInconsistency inconsistency(const QString& description)
{
    return {u"PTHotKeysLib/src/PTHotKeyCenter"_s, description};
}

} // namespace

PTHotKeyCenter::PTHotKeyCenter(QObject* parent, double frameworkVersion)
    : QObject(parent)
    , m_frameworkVersion(frameworkVersion)
{
    connect(&m_grabs, &HotKeyGrabs::keyboardChanged, this, &PTHotKeyCenter::keyboardChanged);
    connect(&m_grabs, &HotKeyGrabs::pressed, this, [this](HotKeyReference reference) {
        Q_EMIT systemEvent(
            {CarbonEvent::keyboardClass, CarbonEvent::hotKeyPressed, HotKeyIdentifier{signature, quint32(reference)}});
    });
}

PTHotKeyCenter::~PTHotKeyCenter() = default;

PTHotKeyCenter& PTHotKeyCenter::sharedCenter()
{
    static QPointer<PTHotKeyCenter> center;
    if (center.isNull()) {
        center = new PTHotKeyCenter(QCoreApplication::instance());
    }
    return *center;
}

bool PTHotKeyCenter::registerHotKey(const PTHotKey::Pointer& hotKey)
{
    unregisterHotKey(hotKey);
    const PTKeyCombo combo = hotKey->keyCombo();
    if (!combo.isValidHotKeyCombo()) {
        return true;
    }
    const std::optional<HotKeyReference> reference = m_grabs.registerHotKey(combo.keyCode(), combo.modifiers());
    if (!reference) {
        return false;
    }
    mHotKeys.emplace(*reference, hotKey);
    _updateEventHandler();
    return true;
}

void PTHotKeyCenter::unregisterHotKey(const PTHotKey::Pointer& hotKey)
{
    if (!allHotKeys().contains(hotKey)) {
        return;
    }
    const HotKeyReference reference = _carbonHotKeyForHotKey(hotKey);
    if (reference == HotKeyReference{}) {
        throw inconsistency({});
    }
    m_grabs.unregisterHotKey(reference);
    mHotKeys.erase(reference);
    _updateEventHandler();
}

QList<PTHotKey::Pointer> PTHotKeyCenter::allHotKeys() const
{
    QList<PTHotKey::Pointer> hotKeys;
    for (const auto& [reference, hotKey] : mHotKeys) {
        hotKeys.append(hotKey);
    }
    return hotKeys;
}

PTHotKey::Pointer PTHotKeyCenter::hotKeyWithIdentifier(const std::optional<QString>& identifier) const
{
    if (!identifier) {
        return {};
    }
    const auto found = std::find_if(mHotKeys.begin(), mHotKeys.end(),
        [&identifier](const auto& entry) { return entry.second->identifier() == identifier; });
    return found == mHotKeys.end() ? nullptr : found->second;
}

void PTHotKeyCenter::sendEvent(const ApplicationEvent& event)
{
    if (_hasCarbonEventSupport() || event.type != ApplicationEvent::systemDefinedType || event.data1 == 0) {
        return;
    }
    const PTHotKey::Pointer hotKey = _hotKeyForCarbonHotKey(HotKeyReference{event.data1});
    if (event.subtype == ApplicationEvent::hotKeyPressedSubtype) {
        _hotKeyDown(hotKey);
    } else if (event.subtype == ApplicationEvent::hotKeyReleasedSubtype) {
        _hotKeyUp(hotKey);
    }
}

int PTHotKeyCenter::sendCarbonEvent(const CarbonEvent& event)
{
    if (!_hasCarbonEventSupport()) {
        throw inconsistency({});
    }
    if (event.eventClass != CarbonEvent::keyboardClass) {
        throw inconsistency(u"Unknown event class"_s);
    }
    if (!event.directObject) {
        return eventParameterNotFoundError;
    }
    if (event.directObject->signature != signature || event.directObject->id == 0) {
        throw inconsistency(u"Invalid hot key id"_s);
    }
    const PTHotKey::Pointer hotKey = _hotKeyForCarbonHotKey(HotKeyReference{event.directObject->id});
    switch (event.kind) {
    case CarbonEvent::hotKeyPressed:
        _hotKeyDown(hotKey);
        return 0;
    case CarbonEvent::hotKeyReleased:
        _hotKeyUp(hotKey);
        return 0;
    default:
        throw inconsistency(u"Unknown event kind"_s);
    }
}

bool PTHotKeyCenter::_hasCarbonEventSupport() const
{
    return std::floor(m_frameworkVersion) > lastFrameworkVersionWithoutCarbonEvents;
}

PTHotKey::Pointer PTHotKeyCenter::_hotKeyForCarbonHotKey(HotKeyReference reference) const
{
    const auto found = mHotKeys.find(reference);
    return found == mHotKeys.end() ? nullptr : found->second;
}

HotKeyReference PTHotKeyCenter::_carbonHotKeyForHotKey(const PTHotKey::Pointer& hotKey) const
{
    const auto isHotKey = [&hotKey](const auto& entry) { return entry.second == hotKey; };
    if (std::count_if(mHotKeys.begin(), mHotKeys.end(), isHotKey) != 1) {
        throw inconsistency(u"Failed to find Carbon Hotkey for PTHotKey"_s);
    }
    return std::find_if(mHotKeys.begin(), mHotKeys.end(), isHotKey)->first;
}

void PTHotKeyCenter::_hotKeyDown(const PTHotKey::Pointer& hotKey)
{
    if (hotKey) {
        hotKey->invoke();
    }
}

int hotKeyEventHandler(void* /*handlerCallReference*/, const CarbonEvent& event, void* /*userData*/)
{
    return PTHotKeyCenter::sharedCenter().sendCarbonEvent(event);
}
