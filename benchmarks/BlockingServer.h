#pragma once

#include <QByteArray>
#include <QUrl>

#include <chrono>
#include <functional>
#include <optional>
#include <thread>
#include <vector>

namespace pobblewig {

/// A server on this machine that costs the measured thread nothing: it answers one request after
/// the other from a thread of its own and closes each connection.
class BlockingServer {
public:
    using Pieces = std::vector<QByteArray>;

    /// Asked in the server's thread. Each piece is one write; without an answer the connection
    /// stays open and silent as long as the server.
    using Answer = std::function<std::optional<Pieces>(const QByteArray& request)>;

    explicit BlockingServer(Answer answer);
    /// A pause follows each piece.
    explicit BlockingServer(const Pieces& pieces, std::chrono::milliseconds pause = {});
    ~BlockingServer();
    Q_DISABLE_COPY_MOVE(BlockingServer)

    const QUrl& url() const { return m_url; }

private:
    void serve();

    Answer m_answer;
    int m_listener;
    QUrl m_url;
    std::chrono::milliseconds m_pause {};
    std::vector<int> m_silentPeers;
    std::thread m_thread;
};

} // namespace pobblewig
