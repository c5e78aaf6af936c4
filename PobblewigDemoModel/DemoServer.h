#pragma once

#include "PobblewigDemoModel/DemoOptions.h"

#include <QTcpServer>

#include <optional>

namespace pobblewig {

/// A model server for this computer only, in the chat completions format, that answers by rules.
class DemoServer {
public:
    explicit DemoServer(DemoOptions options);

    /// The port in use; 0 asks for any free one. Nothing if it cannot be had.
    std::optional<quint16> listen(quint16 port);

private:
    QTcpServer m_server;
};

} // namespace pobblewig
