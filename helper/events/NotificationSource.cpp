// SPDX-License-Identifier: MIT
#include "NotificationSource.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;
using PropertyList::DictionaryPointer;

namespace {

constexpr qint64 critical = 2;
/// Where they stand among the arguments of Notify: susssasa{sv}i.
constexpr size_t hintsAt = 6;

std::optional<EventCode> eventOf(QStringView category)
{
    static constexpr std::array<std::pair<QStringView, EventCode>, 4> categories{{
        {u"im.received", EventCode::MessageReceived},
        {u"email.arrived", EventCode::MailReceived},
        {u"call.incoming", EventCode::CallReceived},
        {u"call.ended", EventCode::CallEnded},
    }};
    const auto* const found = std::ranges::find(categories, category, &std::pair<QStringView, EventCode>::first);
    if (found != categories.end()) {
        return found->second;
    }
    const bool isError = category.endsWith(u".error") || category == u"email.bounced";
    return isError ? std::optional(EventCode::ErrorReported) : std::nullopt;
}

} // namespace

NotificationSource::NotificationSource(QObject* parent)
    : EventSource(parent)
    , m_calls("org.freedesktop.Notifications", "Notify", this)
{
}

void NotificationSource::start()
{
    connect(&m_calls, &CallMonitor::called, this, &NotificationSource::takeNotification);
    m_calls.start();
}

void NotificationSource::takeNotification(const MessageBus::Signal& call)
{
    const DictionaryPointer hints = call.argument(hintsAt).dictionary();
    if (!hints) {
        return;
    }
    const PropertyList::Value category = hints->value(u"category");
    if (const auto event = eventOf(category.stringView()); event) {
        tell(*event);
    } else if (hints->value(u"urgency").integerValue() == critical) {
        tell(EventCode::ErrorReported);
    }
}
