#pragma once

#include "foundation/HTTPClient.h"

#include <QNetworkAccessManager>

namespace pobblewig {

/// The client for the real network, with the proxies that the environment names. Trusts the
/// system's certificates. Never sends a request with a body twice. A body shorter than its
/// announced length is an error; without an announced length, the end of the connection may be
/// taken for the end of the body.
class NetworkHTTPClient final : public HTTPClient {
public:
    NetworkHTTPClient();

    Task<tl::expected<HTTPResponse, TransportError>> send(HTTPRequest request) override;
    HTTPStream stream(HTTPRequest request) override;

private:
    QNetworkAccessManager m_manager;
};

} // namespace pobblewig
