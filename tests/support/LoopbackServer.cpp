#include "support/LoopbackServer.h"

#include "foundation/Overloaded.h"

#include <QRegularExpression>
#include <QTimer>

#include <sys/socket.h>

namespace pobblewig {

namespace {

/// How long the first request in these bytes is, or nothing while a part is missing.
std::optional<qsizetype> requestLength(const QByteArray& bytes)
{
    const auto headEnd = bytes.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return std::nullopt;
    static const QRegularExpression announced(
        QStringLiteral("\r\ncontent-length: (\\d+)"), QRegularExpression::CaseInsensitiveOption);
    const auto match = announced.match(QString::fromLatin1(bytes.first(headEnd)));
    const auto length = headEnd + 4 + match.captured(1).toLongLong();
    return bytes.size() < length ? std::nullopt : std::optional(length);
}

// Closing with this option set sends a reset in place of an orderly end.
void reset(QTcpSocket* socket)
{
    const linger discard { .l_onoff = 1, .l_linger = 0 };
    setsockopt(int(socket->socketDescriptor()), SOL_SOCKET, SO_LINGER, &discard, sizeof discard);
    socket->abort();
}

} // namespace

LoopbackServer::LoopbackServer()
{
    m_server.listen(QHostAddress::LocalHost);
    connect(&m_server, &QTcpServer::newConnection, this, &LoopbackServer::accept);
}

QUrl LoopbackServer::url(const QString& path) const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(m_server.serverPort()).arg(path));
}

QByteArray LoopbackServer::answer(const QByteArray& status, const QByteArray& body)
{
    return "HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size())
        + "\r\n\r\n" + body;
}

QByteArray LoopbackServer::eventStreamHead()
{
    return "HTTP/1.1 200 OK\r\nContent-Type: text/event-stream\r\nConnection: close\r\n\r\n";
}

void LoopbackServer::accept()
{
    auto* socket = m_server.nextPendingConnection();
    auto& connection = m_connections.emplace_back();
    ++m_openConnections;
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    connect(socket, &QTcpSocket::readyRead, this,
        [this, socket, &connection] { read(socket, connection); });
    connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
        --m_openConnections;
        socket->deleteLater();
    });
    auto* turns = new QTimer(socket);
    connect(
        turns, &QTimer::timeout, this, [this, socket, &connection] { play(socket, connection); });
    turns->start(0);
}

void LoopbackServer::read(QTcpSocket* socket, Connection& connection)
{
    connection.received += socket->readAll();
    while (const auto length = requestLength(connection.received)) {
        m_requests.push_back(connection.received.first(*length));
        connection.received.remove(0, *length);
        if (m_scripts.empty())
            return;
        connection.script = std::move(m_scripts.front());
        m_scripts.pop_front();
    }
}

void LoopbackServer::play(QTcpSocket* socket, Connection& connection)
{
    auto& script = connection.script;
    if (script.empty() || !socket->isOpen() || socket->bytesToWrite() > 0)
        return;
    const Overloaded perform {
        [&](Send& step) {
            socket->write(step.bytes);
            socket->flush();
            return --step.times == 0;
        },
        [&](Hold&) { return m_releases > 0 && m_releases-- > 0; },
        [&](Close&) {
            socket->disconnectFromHost();
            return true;
        },
        [&](Reset&) {
            reset(socket);
            return true;
        },
    };
    if (std::visit(perform, script.front()))
        script.pop_front();
}

} // namespace pobblewig
