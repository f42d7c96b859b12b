// SPDX-License-Identifier: MIT
#include "WindowProperties.h"

#include <QByteArray>
#include <QList>

#include <algorithm>
#include <array>
#include <cstring>

namespace {

constexpr quint32 longestInWords = 0x4000;

QByteArrayView bytes(const xcb_get_property_reply_t* reply, quint8 format)
{
    if (!reply || reply->format != format) {
        return {};
    }
    return {static_cast<const char*>(xcb_get_property_value(reply)), xcb_get_property_value_length(reply)};
}

} // namespace

xcb_get_property_cookie_t WindowProperties::request(
    xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property)
{
    return xcb_get_property(connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, longestInWords);
}

std::vector<quint32> WindowProperties::numbers(const xcb_get_property_reply_t* reply)
{
    const QByteArrayView value = bytes(reply, 32);
    std::vector<quint32> numbers(size_t(value.size()) / sizeof(quint32));
    if (!numbers.empty()) {
        std::memcpy(numbers.data(), value.data(), numbers.size() * sizeof(quint32));
    }
    return numbers;
}

SessionWindow::Type WindowProperties::type(const WindowAtoms& atoms, const xcb_get_property_reply_t* reply)
{
    using Type = SessionWindow::Type;
    const std::vector<quint32> told = numbers(reply);
    if (told.empty()) {
        return Type::Normal;
    }
    const std::array known{std::pair(atoms.typeNormal, Type::Normal), std::pair(atoms.typeDialog, Type::Dialog),
        std::pair(atoms.typeMenu, Type::Menu), std::pair(atoms.typePopupMenu, Type::Menu),
        std::pair(atoms.typeDropdownMenu, Type::Menu), std::pair(atoms.typeToolTip, Type::ToolTip),
        std::pair(atoms.typeNotification, Type::Notification)};
    for (const quint32 atom : told) {
        const auto* const found = std::ranges::find(known, atom, &std::pair<xcb_atom_t, Type>::first);
        if (found != known.end()) {
            return found->second;
        }
    }
    return Type::Other;
}

bool WindowProperties::isFollowed(const WindowAtoms& atoms, xcb_atom_t property)
{
    return property == XCB_ATOM_WM_CLASS || property == atoms.state || property == atoms.desktop ||
           property == atoms.type;
}

void WindowProperties::apply(
    SessionWindow& window, const WindowAtoms& atoms, xcb_atom_t property, const xcb_get_property_reply_t* reply)
{
    if (property == XCB_ATOM_WM_CLASS) {
        const QList<QByteArray> halves = bytes(reply, 8).toByteArray().split('\0');
        window.instanceName = QString::fromLatin1(halves.value(0));
        window.windowClass = QString::fromLatin1(halves.value(1));
    } else if (property == atoms.type) {
        window.type = type(atoms, reply);
    } else {
        const std::vector<quint32> told = numbers(reply);
        const auto has = [&told](xcb_atom_t atom) { return std::ranges::find(told, atom) != told.end(); };
        if (property == atoms.state) {
            window.isHidden = has(atoms.stateHidden);
            window.demandsAttention = has(atoms.stateDemandsAttention);
        } else if (property == atoms.desktop) {
            window.desktop = told.empty() ? std::nullopt : std::optional(told.front());
        } else if (property == atoms.processNumber) {
            window.pid = told.empty() ? 0 : told.front();
        }
    }
}
