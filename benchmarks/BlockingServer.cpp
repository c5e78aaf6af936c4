#include "BlockingServer.h"

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

namespace pobblewig {

namespace {

bool isWhole(const QByteArray& request)
{
    const auto head = request.indexOf("\r\n\r\n");
    if (head < 0)
        return false;
    constexpr QByteArrayView name = "\r\ncontent-length:";
    const auto field = request.first(head).toLower().indexOf(name);
    if (field < 0)
        return true;
    const auto from = field + name.size();
    const auto length = request.sliced(from, request.indexOf('\r', from) - from).trimmed();
    return request.size() >= head + 4 + length.toLongLong();
}

QByteArray readRequest(int peer)
{
    QByteArray received;
    char buffer[4096];
    while (!isWhole(received)) {
        const auto count = recv(peer, buffer, sizeof buffer, 0);
        if (count <= 0)
            break;
        received.append(buffer, count);
    }
    return received;
}

/// Returns false if the peer has gone.
bool sendAll(int peer, QByteArrayView piece)
{
    while (!piece.isEmpty()) {
        const auto count = send(peer, piece.data(), size_t(piece.size()), MSG_NOSIGNAL);
        if (count <= 0)
            return false;
        piece = piece.sliced(count);
    }
    return true;
}

} // namespace

BlockingServer::BlockingServer(Answer answer)
    : m_answer(std::move(answer))
    , m_listener(socket(AF_INET, SOCK_STREAM, 0))
{
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    if (bind(m_listener, reinterpret_cast<sockaddr*>(&address), length) != 0
        || listen(m_listener, 8) != 0)
        qFatal("no port is free");
    getsockname(m_listener, reinterpret_cast<sockaddr*>(&address), &length);
    m_url = QUrl(QStringLiteral("http://127.0.0.1:%1").arg(ntohs(address.sin_port)));
    m_thread = std::thread([this] { serve(); });
}

BlockingServer::BlockingServer(const Pieces& pieces, std::chrono::milliseconds pause)
    : BlockingServer([pieces](const QByteArray&) { return pieces; })
{
    m_pause = pause;
}

BlockingServer::~BlockingServer()
{
    shutdown(m_listener, SHUT_RDWR);
    m_thread.join();
    close(m_listener);
    for (const auto peer : m_silentPeers)
        close(peer);
}

void BlockingServer::serve()
{
    for (int peer = accept(m_listener, nullptr, nullptr); peer >= 0;
         peer = accept(m_listener, nullptr, nullptr)) {
        const int now = 1;
        setsockopt(peer, IPPROTO_TCP, TCP_NODELAY, &now, sizeof now);
        const auto answer = m_answer(readRequest(peer));
        if (!answer) {
            m_silentPeers.push_back(peer);
            continue;
        }
        for (const auto& piece : *answer) {
            if (!sendAll(peer, piece))
                break;
            std::this_thread::sleep_for(m_pause);
        }
        close(peer);
    }
}

} // namespace pobblewig
