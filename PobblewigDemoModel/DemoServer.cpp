#include "PobblewigDemoModel/DemoServer.h"

#include "PobblewigDemoModel/DemoConnection.h"

namespace pobblewig {

DemoServer::DemoServer(DemoOptions options)
{
    QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this, options] {
        while (auto* socket = m_server.nextPendingConnection())
            new DemoConnection(socket, options);
    });
}

std::optional<quint16> DemoServer::listen(quint16 port)
{
    if (!m_server.listen(QHostAddress::LocalHost, port))
        return std::nullopt;
    return m_server.serverPort();
}

} // namespace pobblewig
