#pragma once

#include "foundation/HTTPClient.h"
#include "network/CurlMulti.h"
#include "network/CurlTransfer.h"
#include "network/EnvironmentProxies.h"

namespace pobblewig {

/// The client for the real network, with the proxies that the environment names. Trusts the
/// system's certificates. Sends nothing but a GET twice. A body shorter than its announced length
/// is an error; without an announced length, the end of the connection is the end of the body.
class CurlHTTPClient final : public HTTPClient {
public:
    explicit CurlHTTPClient(
        const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());

    Task<tl::expected<HTTPResponse, TransportError>> send(HTTPRequest request) override;
    HTTPStream stream(HTTPRequest request) override;

private:
    HTTPParts start(HTTPRequest request);

    EnvironmentProxies m_proxies;
    CurlMulti m_multi;
    QObject m_transfers;
};

} // namespace pobblewig
