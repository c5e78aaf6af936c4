#pragma once

#include <QByteArray>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

#include <deque>
#include <variant>
#include <vector>

namespace pobblewig {

/// A server on this machine that answers each request with the next script, byte for byte. A
/// script that ends without closing leaves the connection open and silent.
class LoopbackServer : public QObject {
public:
    /// Each piece is written in a turn of its own, once the one before has left.
    struct Send {
        QByteArray bytes;
        int times = 1;
    };
    /// Nothing until a `release` of its own.
    struct Hold { };
    struct Close { };
    struct Reset { };
    using Step = std::variant<Send, Hold, Close, Reset>;
    using Script = std::deque<Step>;

    LoopbackServer();

    QUrl url(const QString& path = QStringLiteral("/")) const;

    void enqueue(Script script) { m_scripts.push_back(std::move(script)); }
    void release() { ++m_releases; }

    /// Whole requests, with their heads.
    const std::vector<QByteArray>& requests() const { return m_requests; }
    int openConnections() const { return m_openConnections; }

    static QByteArray answer(const QByteArray& status, const QByteArray& body);
    static QByteArray eventStreamHead();

private:
    struct Connection {
        QByteArray received;
        Script script;
    };

    void accept();
    void read(QTcpSocket* socket, Connection& connection);
    void play(QTcpSocket* socket, Connection& connection);

    QTcpServer m_server;
    std::deque<Script> m_scripts;
    std::vector<QByteArray> m_requests;
    std::deque<Connection> m_connections;
    int m_releases = 0;
    int m_openConnections = 0;
};

} // namespace pobblewig
