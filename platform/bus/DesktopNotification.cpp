// SPDX-License-Identifier: MIT
#include "DesktopNotification.h"

#include "MessageBus.h"

#include <product/Product.h>

#include <systemd/sd-bus.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <memory>
#include <tuple>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto service = "org.freedesktop.Notifications";
constexpr auto path = "/org/freedesktop/Notifications";
constexpr auto answerTimeout = 2s;
/// In UTF-16 units. Servers cut as well, but what they cut is theirs.
constexpr qsizetype longestTitle = 120;
constexpr qsizetype longestBody = 1'000;

QString limited(const QString& text, qsizetype length)
{
    return text.size() <= length ? text : text.left(length - 1) + u'…';
}

bool understandsMarkup(const MessageBus::Arguments* reply)
{
    const PropertyList::ArrayPointer abilities =
        reply != nullptr && !reply->empty() ? reply->front().array() : PropertyList::ArrayPointer();
    return abilities && std::ranges::any_of(*abilities,
                            [](const PropertyList::Value& ability) { return ability.stringView() == u"body-markup"; });
}

using PlacePointer = std::shared_ptr<uint32_t>;

/// The number under which the server shows what was sent. A refusal leaves the one before.
int takeNumber(sd_bus_message* reply, void* place, sd_bus_error* /*error*/)
{
    uint32_t number = 0;
    if (sd_bus_message_read(reply, "u", &number) > 0) {
        **static_cast<PlacePointer*>(place) = number;
    }
    return 0;
}

void send(sd_bus* connection, const PlacePointer& place, const QByteArray& icon, const QByteArray& title,
    const QByteArray& body)
{
    constexpr int32_t asLongAsTheServerLikes = -1;
    auto held = std::make_unique<PlacePointer>(place);
    sd_bus_slot* slot = nullptr;
    if (connection == nullptr || sd_bus_call_method_async(connection, &slot, service, path, service, "Notify",
                                     takeNumber, held.get(), "susssasa{sv}i", PRODUCT_NAME, *place, icon.constData(),
                                     title.constData(), body.constData(), 0, 0, asLongAsTheServerLikes) < 0) {
        return;
    }
    // The place lives until the answer has come, or will not.
    sd_bus_slot_set_destroy_callback(slot, [](void* pointer) { delete static_cast<PlacePointer*>(pointer); });
    std::ignore = held.release();
    sd_bus_slot_set_floating(slot, 1);
    sd_bus_slot_unref(slot);
}

} // namespace

DesktopNotification::DesktopNotification(const QString& icon)
    : m_icon(icon)
    , m_place(std::make_shared<uint32_t>(0))
{
}

void DesktopNotification::show(const QString& title, const QString& body) const
{
    const auto sendAs = [place = m_place, icon = m_icon.toUtf8(), title = limited(title, longestTitle).toUtf8(),
                            body = limited(body, longestBody)](const MessageBus::Arguments* abilities) {
        // Only servers that understand markup see some in a text.
        const QByteArray plain = (understandsMarkup(abilities) ? body.toHtmlEscaped() : body).toUtf8();
        MessageBus::session().run([=](sd_bus* connection) { send(connection, place, icon, title, plain); });
    };
    MessageBus::session().call({service, path, service, "GetCapabilities"}, {}, answerTimeout, sendAs);
}
