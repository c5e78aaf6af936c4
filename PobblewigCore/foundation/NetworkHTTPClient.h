#pragma once

#include "foundation/HTTPClient.h"

#include <QNetworkAccessManager>

namespace pobblewig {

/// The client for the real network, with the proxies that the environment names. Servers are
/// identified by the certificates that the system trusts. A request with a body is never sent
/// twice. A body that ends before its announced length is an error; without an announced length
/// the end of the connection may pass for the end of the body.
class NetworkHTTPClient final : public HTTPClient {
public:
    NetworkHTTPClient();

    Task<tl::expected<HTTPResponse, TransportError>> send(HTTPRequest request) override;
    HTTPStream stream(HTTPRequest request) override;

private:
    QNetworkAccessManager m_manager;
};

} // namespace pobblewig
