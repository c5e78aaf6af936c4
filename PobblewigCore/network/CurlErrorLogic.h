#pragma once

#include "foundation/HTTPClient.h"

#include <curl/curl.h>

#include <optional>

/// Says in the user's words how a transfer ended.
namespace pobblewig::CurlErrorLogic {

struct Ending {
    CURLcode result = CURLE_OK;
    /// `errno` where the system refused a connection.
    int systemError = 0;
    /// Whether a status arrived.
    bool hasHead = false;
    bool usesProxy = false;
    /// The status with which a proxy refused to connect.
    int proxyStatus = 0;
    /// What OpenSSL found wrong with the certificate.
    long certificateError = 0;
};

/// Returns nothing if the whole answer arrived, whatever its status.
std::optional<TransportError> failure(const Ending& ending, const QUrl& url);

} // namespace pobblewig::CurlErrorLogic
