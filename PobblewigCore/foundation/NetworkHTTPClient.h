#pragma once

#include "foundation/HTTPClient.h"

#include <QNetworkAccessManager>

namespace pobblewig {

/// The client for the real network, with the proxies that the environment names. Servers are
/// identified by the certificates that the system trusts. A request with a body is never sent
/// twice.
class NetworkHTTPClient final : public HTTPClient {
public:
    NetworkHTTPClient();

    Task<tl::expected<HTTPResponse, TransportError>> send(HTTPRequest request) override;
    HTTPStream stream(HTTPRequest request) override;

private:
    QNetworkAccessManager m_manager;
};

} // namespace pobblewig
