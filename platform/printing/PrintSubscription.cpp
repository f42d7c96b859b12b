// SPDX-License-Identifier: MIT
#include "PrintSubscription.h"

#include "PrintServerMessage.h"

#include <product/Product.h>

#include <QFile>
#include <QLoggingCategory>
#include <QSignalBlocker>

#include <pwd.h>
#include <unistd.h>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

Q_LOGGING_CATEGORY(log, PRODUCT_NAME ".printing")

constexpr auto lease = 30min;
/// Answers have some hundred.
constexpr qint64 mostBytes = 65'536;

QString socketPath()
{
    const QString named = qEnvironmentVariable("CUPS_SERVER");
    return named.startsWith(u'/') ? named : u"/run/cups/cups.sock"_s;
}

QByteArray loginName()
{
    const passwd* const user = ::getpwuid(::geteuid());
    return user != nullptr ? QByteArray(user->pw_name) : QByteArray();
}

} // namespace

PrintSubscription::PrintSubscription(QObject* parent)
    : QObject(parent)
    , m_path(socketPath())
    , m_user(loginName())
    , m_return(QFile::encodeName(m_path))
    , m_returned(m_return.descriptor(), QSocketNotifier::Read)
{
    m_server.setReadBufferSize(mostBytes);
    m_renewal.setSingleShot(true);
    m_renewal.setTimerType(Qt::VeryCoarseTimer);
    m_renewal.setInterval(lease / 2);
}

PrintSubscription::~PrintSubscription()
{
    // The members' signals come no more.
    m_server.disconnect(this);
}

void PrintSubscription::start()
{
    connect(&m_server, &QLocalSocket::connected, this, &PrintSubscription::send);
    connect(&m_server, &QLocalSocket::disconnected, this, &PrintSubscription::takeAnswer);
    connect(&m_renewal, &QTimer::timeout, this, &PrintSubscription::ask);
    connect(&m_server, &QLocalSocket::errorOccurred, this, [this](QLocalSocket::LocalSocketError error) {
        // Otherwise it has answered.
        if (error != QLocalSocket::PeerClosedError) {
            m_return.wait();
        }
    });
    connect(&m_returned, &QSocketNotifier::activated, this, [this] {
        if (m_return.isDue()) {
            ask();
        }
    });
    ask();
}

void PrintSubscription::ask()
{
    {
        // An answer that was waited for does not count any more.
        const QSignalBlocker quiet(m_server);
        m_server.abort();
    }
    m_server.connectToServer(m_path);
}

void PrintSubscription::send()
{
    m_return.end();
    m_server.write(m_subscription == 0 ? PrintServerMessage::subscribe(m_user, lease)
                                       : PrintServerMessage::renew(m_user, m_subscription, lease));
}

void PrintSubscription::takeAnswer()
{
    const PrintServerMessage::Answer answer = PrintServerMessage::read(m_server.readAll());
    if (answer.isGranted) {
        m_subscription = answer.subscription != 0 ? answer.subscription : m_subscription;
        m_renewal.start();
    } else if (std::exchange(m_subscription, 0) != 0) {
        // It has been forgotten; not from within the signal of the connection that ends.
        QMetaObject::invokeMethod(this, &PrintSubscription::ask, Qt::QueuedConnection);
    } else {
        qCInfo(log) << "the print server does not tell of its jobs";
    }
}
