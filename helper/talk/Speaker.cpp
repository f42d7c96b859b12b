// SPDX-License-Identifier: MIT
#include "Speaker.h"

#include <QList>
#include <QLocalSocket>
#include <QLocale>
#include <QStandardPaths>
#include <QTimer>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto patience = 10s;
/// A reply is a short line.
constexpr qint64 longestReply = 1'024;

QString socketPath()
{
    const QString address = qEnvironmentVariable("SPEECHD_ADDRESS");
    const QString scheme = u"unix_socket:"_s;
    if (address.startsWith(scheme)) {
        return address.sliced(scheme.size());
    }
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + u"/speech-dispatcher/speechd.sock"_s;
}

/// Sends one request after the other, each when the one before has been granted; ends itself.
class Conversation final : public QObject
{
public:
    Conversation(const QString& text, QObject* parent)
        : QObject(parent)
        , m_requests{"SET SELF CLIENT_NAME user:blipsy:helper",
              "SET SELF LANGUAGE " + QLocale().name().left(2).toLatin1(), "SPEAK", text.toUtf8() + "\r\n.", "QUIT"}
    {
        connect(&m_socket, &QLocalSocket::connected, this, &Conversation::sendNext);
        connect(&m_socket, &QLocalSocket::readyRead, this, &Conversation::readReplies);
        connect(&m_socket, &QLocalSocket::disconnected, this, &QObject::deleteLater);
        // Also where the service is absent, which is an ordinary state.
        connect(&m_socket, &QLocalSocket::errorOccurred, this, &QObject::deleteLater);
        QTimer::singleShot(patience, this, &QObject::deleteLater);
        m_socket.connectToServer(socketPath());
    }

private:
    void sendNext()
    {
        if (!m_requests.isEmpty()) {
            m_socket.write(m_requests.takeFirst() + "\r\n");
        }
    }

    /// A reply is lines "225-…" and a last one "225 …"; 2 at its beginning grants.
    void readReplies()
    {
        while (m_socket.canReadLine()) {
            const QByteArray line = m_socket.readLine(longestReply);
            if (line.size() > 3 && line[3] == '-') {
                continue;
            }
            if (!line.startsWith('2')) {
                deleteLater();
                return;
            }
            sendNext();
        }
        if (m_socket.bytesAvailable() > longestReply) {
            deleteLater();
        }
    }

    QLocalSocket m_socket;
    QList<QByteArray> m_requests;
};

/// One line that the protocol cannot mistake for its own.
QString oneLine(const QString& text)
{
    QString line = text.left(Speaker::longestText);
    std::ranges::replace_if(
        line, [](QChar character) { return character.category() == QChar::Other_Control; }, u' ');
    line = std::move(line).trimmed();
    return line.startsWith(u'.') ? u'.' + line : line;
}

} // namespace

Speaker::Speaker(QObject* parent)
    : QObject(parent)
{
}

Speaker::~Speaker() = default;

void Speaker::say(const QString& text)
{
    delete m_conversation;
    m_conversation = new Conversation(oneLine(text), this);
}
