// SPDX-License-Identifier: MIT
#include "PasswordFocus.h"

#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto service = "org.a11y.Bus";
constexpr auto servicePath = "/org/a11y/bus";
constexpr auto registry = "org.a11y.atspi.Registry";
constexpr auto registryPath = "/org/a11y/atspi/registry";
/// The number that AT-SPI gives to the role "password text".
constexpr int passwordText = 40;
constexpr auto answerTimeout = 500ms;

} // namespace

PasswordFocus::PasswordFocus()
    : m_status(MessageBus::session(), {service, servicePath, "org.a11y.Status", {u"IsEnabled"_s}}, nullptr)
{
    connect(&m_status, &BusProperties::known, this, &PasswordFocus::takeStatus);
    connect(&m_status, &BusProperties::changed, this, &PasswordFocus::takeStatus);
}

PasswordFocus::~PasswordFocus() = default;

void PasswordFocus::follow()
{
    m_status.follow();
}

void PasswordFocus::takeStatus()
{
    if (m_status.value(u"IsEnabled").integerValue() == 0) {
        leave();
        return;
    }
    MessageBus::session().request({service, servicePath, service, "GetAddress"}, {}, answerTimeout, this,
        [this](const MessageBus::Arguments* reply) {
            const QString address = MessageBus::valueAt(reply, 0).string();
            if (!address.isEmpty()) {
                listen(address.toUtf8());
            }
        });
}

void PasswordFocus::listen(const QByteArray& address)
{
    leave();
    m_bus = std::make_unique<MessageBus>(address);
    m_context = std::make_unique<QObject>();
    m_bus->subscribe({{}, {}, "org.a11y.atspi.Event.Object", "StateChanged"}, m_context.get(),
        [this](const MessageBus::Signal& signal) { takeState(signal); });
    // Programs tell only what somebody has asked for.
    m_bus->request({registry, registryPath, registry, "RegisterEvent"}, {u"object:state-changed:focused"_s},
        answerTimeout, m_context.get(), [](const MessageBus::Arguments*) {});
}

void PasswordFocus::leave()
{
    m_context.reset();
    m_bus.reset();
    m_focus.clear();
    tell(false);
}

void PasswordFocus::takeState(const MessageBus::Signal& signal)
{
    if (signal.argument(0).stringView() != u"focused") {
        return;
    }
    const QString place = signal.sender + signal.path;
    if (signal.argument(1).integerValue() != 0) {
        m_focus = place;
        tell(true);
        askForRole(signal.sender, signal.path);
    } else if (m_focus == place) {
        m_focus.clear();
        tell(false);
    }
}

void PasswordFocus::askForRole(const QString& program, const QString& path)
{
    m_bus->request({program.toUtf8(), path.toUtf8(), "org.a11y.atspi.Accessible", "GetRole"}, {}, answerTimeout,
        m_context.get(), [this, place = QString(program + path)](const MessageBus::Arguments* reply) {
            if (m_focus == place) {
                tell(MessageBus::valueAt(reply, 0).integerValue() == passwordText);
            }
        });
}

void PasswordFocus::tell(bool isSecret)
{
    if (std::exchange(m_isSecret, isSecret) != isSecret) {
        Q_EMIT changed(isSecret);
    }
}
