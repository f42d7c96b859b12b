// SPDX-License-Identifier: MIT
#include "SessionFront.h"

#include <platform/bus/BusProperties.h>
#include <platform/bus/LoginSession.h>

using namespace Qt::StringLiterals;

namespace {

const QString active = u"Active"_s;

} // namespace

SessionFront::SessionFront() = default;
SessionFront::~SessionFront() = default;

void SessionFront::follow()
{
    LoginSession::find(this, [this](const QByteArray& path) { followSession(path); });
}

void SessionFront::followSession(const QByteArray& path)
{
    if (m_session) {
        return;
    }
    m_session = std::make_unique<BusProperties>(MessageBus::system(),
        BusProperties::Source{LoginSession::service, path, LoginSession::interface, {active}}, nullptr);
    const auto tell = [this] { Q_EMIT changed(m_session->value(active).integerValue() != 0); };
    connect(m_session.get(), &BusProperties::known, this, tell);
    connect(m_session.get(), &BusProperties::changed, this, tell);
    m_session->follow();
}
