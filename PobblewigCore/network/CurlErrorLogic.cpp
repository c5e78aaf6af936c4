#include "network/CurlErrorLogic.h"

#include "foundation/TransportErrorLogic.h"

#include <cerrno>

namespace pobblewig {

namespace {

constexpr int proxyAuthenticationRequired = 407;

/// Numbers of OpenSSL (X509_V_ERR_…), which libcurl passes on.
TransportError::Kind certificateFault(long error)
{
    using Kind = TransportError::Kind;
    switch (error) {
    case 0: // The chain is good, so it is the name.
    case 62:
    case 64:
        return Kind::wrongHost;
    case 9:
    case 10:
        return Kind::expired;
    case 18:
    case 19:
    case 20:
    case 21:
        return Kind::untrusted;
    default:
        return Kind::notSecure;
    }
}

TransportError notConnected(const CurlErrorLogic::Ending& ending, const QUrl& url)
{
    if (ending.usesProxy)
        return TransportErrorLogic::proxyIsSilent(url);
    if (ending.systemError == ECONNREFUSED)
        return TransportErrorLogic::nothingAnswers(url);
    return TransportErrorLogic::connectionFailed(url);
}

TransportError noAnswer(const CurlErrorLogic::Ending& ending, const QUrl& url)
{
    if (ending.proxyStatus == proxyAuthenticationRequired)
        return TransportErrorLogic::proxyRefuses(url);
    switch (ending.result) {
    case CURLE_COULDNT_RESOLVE_HOST:
        return TransportErrorLogic::serverNotFound(url);
    case CURLE_COULDNT_CONNECT:
        return notConnected(ending, url);
    case CURLE_COULDNT_RESOLVE_PROXY:
    case CURLE_PROXY:
        return TransportErrorLogic::proxyIsSilent(url);
    case CURLE_PEER_FAILED_VERIFICATION:
        return TransportErrorLogic::notSecure(certificateFault(ending.certificateError), url);
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CACERT_BADFILE:
        return TransportErrorLogic::notSecure(TransportError::Kind::notSecure, url);
    // The last of these breaks off a request that libcurl would send again.
    case CURLE_GOT_NOTHING:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
    case CURLE_ABORTED_BY_CALLBACK:
        return TransportErrorLogic::answeredBadly(url);
    // A header without a colon, and an answer without a head.
    case CURLE_BAD_FUNCTION_ARGUMENT:
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_OK:
        return TransportErrorLogic::notHTTP(url);
    case CURLE_URL_MALFORMAT:
        return TransportErrorLogic::notAWebAddress(url);
    default:
        return TransportErrorLogic::connectionFailed(url);
    }
}

} // namespace

std::optional<TransportError> CurlErrorLogic::failure(const Ending& ending, const QUrl& url)
{
    // How libcurl names a single line of a head beyond its own limit.
    if (ending.result == CURLE_OUT_OF_MEMORY)
        return TransportErrorLogic::headTooLarge(url);
    if (!ending.hasHead)
        return noAnswer(ending, url);
    if (ending.result == CURLE_OK)
        return std::nullopt;
    return TransportErrorLogic::lostConnection(url);
}

} // namespace pobblewig
