// SPDX-License-Identifier: MIT
#include "SoundServerNews.h"

#include "SoundServer.h"

#include <QByteArray>

#include <pulse/context.h>
#include <pulse/introspect.h>
#include <pulse/operation.h>
#include <pulse/proplist.h>
#include <pulse/subscribe.h>

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <span>
#include <utility>

namespace {

void forget(pa_operation* operation)
{
    if (operation != nullptr) {
        pa_operation_unref(operation);
    }
}

bool hasHeadphones(const pa_sink_info& output)
{
    static constexpr std::array formFactors{"headphone", "headset", "hands-free"};
    const char* const formFactor = pa_proplist_gets(output.proplist, PA_PROP_DEVICE_FORM_FACTOR);
    const auto isPlugged = [](const pa_sink_port_info* port) {
        return (port->type == PA_DEVICE_PORT_TYPE_HEADPHONES || port->type == PA_DEVICE_PORT_TYPE_HEADSET) &&
               port->available == PA_PORT_AVAILABLE_YES;
    };
    return std::ranges::any_of(formFactors, [formFactor](const char* name) {
        return qstrcmp(name, formFactor) == 0;
    }) || std::ranges::any_of(std::span(output.ports, output.n_ports), isPlugged);
}

} // namespace

/// What is known of the server. Everything here happens with the server locked.
class SoundServerNews::Listener final
{
public:
    explicit Listener(SoundServerNews* news)
        : m_news(news)
    {
    }

    /// A connection has been made.
    void begin(pa_context* context)
    {
        m_context = context;
        m_headphones.clear();
        m_default.clear();
        m_level.reset();
        pa_context_set_subscribe_callback(context, &Listener::receive, this);
        constexpr auto subjects = pa_subscription_mask_t(
            PA_SUBSCRIPTION_MASK_SINK | PA_SUBSCRIPTION_MASK_SERVER | PA_SUBSCRIPTION_MASK_SINK_INPUT);
        forget(pa_context_subscribe(context, subjects, nullptr, nullptr));
        forget(pa_context_get_sink_info_list(
            context,
            [](pa_context*, const pa_sink_info* output, int, void* self) {
                if (output != nullptr) {
                    static_cast<Listener*>(self)->m_headphones[output->index] = hasHeadphones(*output);
                }
            },
            this));
        askForDefault();
    }

    void end()
    {
        if (m_context != nullptr) {
            pa_context_set_subscribe_callback(std::exchange(m_context, nullptr), nullptr, nullptr);
        }
    }

    /// Nobody listens any more.
    void leave()
    {
        m_news = nullptr;
        end();
    }

private:
    static void receive(pa_context* /*context*/, pa_subscription_event_type_t event, uint32_t index, void* listener)
    {
        auto* const self = static_cast<Listener*>(listener);
        const auto subject = event & PA_SUBSCRIPTION_EVENT_FACILITY_MASK;
        const auto kind = event & PA_SUBSCRIPTION_EVENT_TYPE_MASK;
        if (subject == PA_SUBSCRIPTION_EVENT_SERVER) {
            self->askForDefault();
        } else if (subject == PA_SUBSCRIPTION_EVENT_SINK && kind == PA_SUBSCRIPTION_EVENT_REMOVE) {
            self->setHeadphones(index, false);
            self->m_headphones.erase(index);
        } else if (subject == PA_SUBSCRIPTION_EVENT_SINK) {
            forget(pa_context_get_sink_info_by_index(self->m_context, index, &Listener::takeOutput, self));
        } else if (subject == PA_SUBSCRIPTION_EVENT_SINK_INPUT && kind == PA_SUBSCRIPTION_EVENT_NEW) {
            forget(pa_context_get_sink_input_info(self->m_context, index, &Listener::takeStream, self));
        }
    }

    void askForDefault()
    {
        forget(pa_context_get_server_info(
            m_context,
            [](pa_context* context, const pa_server_info* server, void* listener) {
                auto* const self = static_cast<Listener*>(listener);
                if (server == nullptr || self->m_default == server->default_sink_name) {
                    return;
                }
                self->m_default = server->default_sink_name;
                self->m_level.reset();
                forget(
                    pa_context_get_sink_info_by_name(context, server->default_sink_name, &Listener::takeOutput, self));
            },
            this));
    }

    static void takeOutput(pa_context* /*context*/, const pa_sink_info* output, int /*endOfList*/, void* listener)
    {
        auto* const self = static_cast<Listener*>(listener);
        if (output == nullptr) {
            return;
        }
        self->setHeadphones(output->index, hasHeadphones(*output));
        if (self->m_default != output->name) {
            return;
        }
        const std::pair level(pa_cvolume_max(&output->volume), output->mute != 0);
        const auto before = std::exchange(self->m_level, level);
        if (before && before != level) {
            self->tell([](SoundServerNews& news) { Q_EMIT news.volumeChanged(); });
        }
    }

    void setHeadphones(uint32_t output, bool isPlugged)
    {
        if (std::exchange(m_headphones[output], isPlugged) != isPlugged) {
            tell([isPlugged](SoundServerNews& news) { Q_EMIT news.headphonesPlugged(isPlugged); });
        }
    }

    static void takeStream(pa_context* /*context*/, const pa_sink_input_info* stream, int /*endOfList*/, void* self)
    {
        const char* const name = stream != nullptr ? pa_proplist_gets(stream->proplist, PA_PROP_EVENT_ID) : nullptr;
        if (name != nullptr) {
            static_cast<Listener*>(self)->tell(
                [name = QString::fromUtf8(name)](SoundServerNews& news) { Q_EMIT news.eventSoundPlayed(name); });
        }
    }

    /// Later, on the thread of the news.
    template <typename Message>
    void tell(Message message)
    {
        if (m_news != nullptr) {
            QMetaObject::invokeMethod(
                m_news, [news = m_news, message] { message(*news); }, Qt::QueuedConnection);
        }
    }

    SoundServerNews* m_news;
    pa_context* m_context = nullptr;
    /// By the number of the output.
    std::map<uint32_t, bool> m_headphones;
    /// The name of the default output, and its volume and muting when they are known.
    QByteArray m_default;
    std::optional<std::pair<pa_volume_t, bool>> m_level;
};

SoundServerNews::SoundServerNews(QObject* parent)
    : QObject(parent)
    , m_listener(std::make_shared<Listener>(this))
{
}

SoundServerNews::~SoundServerNews()
{
    const SoundServer::Lock lock(SoundServer::instance());
    m_listener->leave();
}

void SoundServerNews::start()
{
    SoundServer& server = SoundServer::instance();
    const SoundServer::Lock lock(server);
    // The server keeps its handlers for ever.
    const std::weak_ptr<Listener> listener = m_listener;
    server.whenConnected([listener](pa_context* context) {
        if (const auto self = listener.lock()) {
            self->begin(context);
        }
    });
    server.whenLost([listener] {
        if (const auto self = listener.lock()) {
            self->end();
        }
    });
    server.stayConnected();
}
