#pragma once

#include "PobblewigDemoModel/DemoOptions.h"

#include <QTcpServer>

#include <optional>

namespace pobblewig {

/// A model server for this computer only, in the chat completions format, that answers by rules.
class DemoServer {
public:
    explicit DemoServer(DemoOptions options);

    /// The port in use; 0 requests any free one. Returns nothing if the port is not available.
    std::optional<quint16> listen(quint16 port);

private:
    QTcpServer m_server;
};

} // namespace pobblewig
