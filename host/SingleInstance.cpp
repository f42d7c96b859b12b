// SPDX-License-Identifier: MIT
#include "SingleInstance.h"

#include "LockFiles.h"

#include <QCryptographicHash>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QStandardPaths>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QString serviceName = u"com.blipsy.Settings"_s;
const QString objectPath = u"/com/blipsy/Settings"_s;
constexpr int answerTimeout = 5'000;

/// One lock for each session, which its bus tells from others. The folder goes with the session.
QString lockPath()
{
    const QByteArray session =
        QCryptographicHash::hash(qgetenv("DBUS_SESSION_BUS_ADDRESS"), QCryptographicHash::Sha256).toHex().left(16);
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + u"/blipsy-settings-"_s +
           QString::fromLatin1(session) + u".lock"_s;
}

} // namespace

SingleInstance::SingleInstance(bool hasBus)
    : m_hasBus(hasBus)
    , m_lock(lockPath())
{
    m_lock.setStaleLockTime(LockFiles::emptyLockLifetime);
}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::claim()
{
    if (m_hasBus) {
        QDBusConnection bus = QDBusConnection::sessionBus();
        // The object comes first: whoever finds the name finds it, too.
        bus.registerObject(objectPath, this, QDBusConnection::ExportScriptableSlots);
        m_isReachable = !bus.registerService(serviceName);
        if (m_isReachable) {
            return false;
        }
    }
    // Where no lock can be made at all, nothing is gained by refusing to start.
    return m_lock.tryLock(0) || m_lock.error() != QLockFile::LockFailedError;
}

std::optional<QString> SingleInstance::handOver(const Request& request) const
{
    if (!m_isReachable) {
        return u"it is not on the session bus"_s;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(serviceName, objectPath, serviceName, u"Show"_s);
    call.setArguments({request.document, request.tab, request.activationToken});
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, answerTimeout);
    if (reply.type() != QDBusMessage::ErrorMessage) {
        return std::nullopt;
    }
    return reply.errorName() == QDBusError::errorString(QDBusError::InvalidArgs) ? reply.errorMessage()
                                                                                 : u"it does not answer"_s;
}

void SingleInstance::serve(Handler handler)
{
    m_handler = std::move(handler);
}

void SingleInstance::Show(const QString& document, const QString& tab, const QString& activationToken)
{
    const std::optional<QString> problem =
        m_handler ? m_handler({document, tab, activationToken}) : u"it is still starting"_s;
    if (problem) {
        sendErrorReply(QDBusError::InvalidArgs, *problem);
    }
}
