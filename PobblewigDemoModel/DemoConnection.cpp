#include "PobblewigDemoModel/DemoConnection.h"

#include "PobblewigDemoModel/ChatRequest.h"
#include "PobblewigDemoModel/CompletionFormat.h"
#include "PobblewigDemoModel/DemoReplies.h"

namespace pobblewig {

namespace {

QByteArray statusLine(int status)
{
    return "HTTP/1.1 " + QByteArray::number(status) + (status == 200 ? " OK" : " Refused") + "\r\n";
}

QByteArray httpChunk(const QByteArray& bytes)
{
    return QByteArray::number(bytes.size(), 16) + "\r\n" + bytes + "\r\n";
}

bool isChatPath(const QByteArray& path)
{
    return path == "/v1/chat/completions" || path == "/chat/completions";
}

} // namespace

DemoConnection::DemoConnection(QTcpSocket* socket, DemoOptions options)
    : QObject(socket)
    , m_socket(socket)
    , m_options(std::move(options))
{
    // Otherwise the system collects words before sending them.
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    m_pace.setInterval(m_options.delayBetweenWords);
    connect(&m_pace, &QTimer::timeout, this, &DemoConnection::sendNextEvent);
    m_silence.setSingleShot(true);
    m_silence.start(m_options.patience);
    connect(&m_silence, &QTimer::timeout, socket, &QTcpSocket::abort);
    const auto restart = [this] { m_silence.start(m_options.patience); };
    connect(socket, &QTcpSocket::bytesWritten, &m_silence, restart);
    connect(socket, &QTcpSocket::readyRead, &m_silence, restart);
    connect(socket, &QTcpSocket::readyRead, this, &DemoConnection::receive);
    connect(socket, &QTcpSocket::disconnected, &m_pace, &QTimer::stop);
    connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
}

void DemoConnection::receive()
{
    const auto piece = m_socket->readAll();
    if (m_isAnswered)
        return;
    const auto outcome = m_reader.feed(piece);
    if (!outcome)
        return;
    m_isAnswered = true;
    if (*outcome)
        answer(**outcome);
    else
        refuse(outcome->error());
}

void DemoConnection::answer(const ReceivedRequest& request)
{
    if (request.method == "GET" && request.path == "/v1/models")
        sendAll(CompletionFormat::models());
    else if (!isChatPath(request.path))
        refuse({ 404, QStringLiteral("there are only /v1/chat/completions and /v1/models") });
    else if (request.method != "POST")
        refuse({ 405, QStringLiteral("a chat is asked for with POST") });
    else
        answerChat(request.body);
}

void DemoConnection::answerChat(const QByteArray& body)
{
    const auto request = ChatRequest::parse(body);
    if (!request)
        return refuse({ 400, request.error() });
    if (m_options.refusesTools && !request->tools.empty())
        return refuse({ 400, QStringLiteral("this model does not support tools") });
    const auto reply = DemoReplies::reply(*request, m_options.now());
    if (!request->stream)
        return sendAll(CompletionFormat::completion(*request, reply, systemNow()));
    m_events = CompletionFormat::events(*request, reply, systemNow());
    m_socket->write(statusLine(200)
        + "Content-Type: text/event-stream\r\nTransfer-Encoding: chunked\r\n"
          "Cache-Control: no-cache\r\nConnection: close\r\n\r\n");
    sendNextEvent();
    m_pace.start();
}

void DemoConnection::refuse(const RequestRefusal& refusal)
{
    send(refusal.status, CompletionFormat::error(refusal.reason));
    // Closing the connection while the client still sends would discard the answer.
    QTimer::singleShot(std::chrono::seconds(5), m_socket, &QTcpSocket::disconnectFromHost);
}

void DemoConnection::sendAll(const QByteArray& json)
{
    send(200, json);
    m_socket->disconnectFromHost();
}

void DemoConnection::send(int status, const QByteArray& json)
{
    m_socket->write(statusLine(status) + "Content-Type: application/json\r\nContent-Length: "
        + QByteArray::number(json.size()) + "\r\nConnection: close\r\n\r\n" + json);
}

void DemoConnection::sendNextEvent()
{
    m_socket->write(httpChunk(m_events[m_nextEvent]));
    ++m_nextEvent;
    if (m_nextEvent < m_events.size())
        return;
    m_pace.stop();
    m_socket->write(httpChunk({}));
    m_socket->disconnectFromHost();
}

} // namespace pobblewig
