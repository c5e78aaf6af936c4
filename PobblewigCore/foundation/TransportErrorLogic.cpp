#include "foundation/TransportErrorLogic.h"

namespace pobblewig {

using Kind = TransportError::Kind;

namespace {

QString serverName(const QUrl& url)
{
    return url.adjusted(QUrl::RemoveUserInfo).authority();
}

TransportError error(Kind kind, const QString& text, const QUrl& url)
{
    return { kind, text.arg(serverName(url)) };
}

// The manager reports statuses of 400 and more as errors too, next to those of the protocol itself.
bool tellsAStatus(QNetworkReply::NetworkError error)
{
    return error == QNetworkReply::ProxyAuthenticationRequiredError
        || (error >= QNetworkReply::ContentAccessDenied && error != QNetworkReply::ProtocolFailure
            && error != QNetworkReply::ContentReSendError);
}

bool cameToItsEnd(const TransportErrorLogic::ReplyEnding& ending)
{
    if (ending.isShort)
        return false;
    // The connection closed before the manager had seen the answer, and it wanted to begin again.
    if (ending.error == QNetworkReply::ContentReSendError)
        return !ending.isChunked;
    return ending.error == QNetworkReply::NoError || tellsAStatus(ending.error);
}

TransportError timedOut(const HTTPRequest& request)
{
    const auto seconds = std::chrono::ceil<std::chrono::seconds>(request.timeout).count();
    const auto text = QStringLiteral("%1 sent nothing for %2 seconds. Try again later.");
    return { Kind::timedOut, text.arg(serverName(request.url), QString::number(seconds)) };
}

TransportError noAnswer(QNetworkReply::NetworkError cause, const QUrl& url)
{
    switch (cause) {
    case QNetworkReply::HostNotFoundError:
        return error(Kind::unreachable,
            QStringLiteral("No server named %1 was found. Check its address and the internet "
                           "connection."),
            url);
    case QNetworkReply::ConnectionRefusedError:
        return error(Kind::unreachable,
            QStringLiteral("Nothing answers at %1. Check that the server is running and that its "
                           "address is right."),
            url);
    case QNetworkReply::SslHandshakeFailedError:
        return error(Kind::unreachable,
            QStringLiteral("No secure connection to %1: its identity could not be confirmed. Check "
                           "its address and this computer's date."),
            url);
    case QNetworkReply::ProxyConnectionRefusedError:
    case QNetworkReply::ProxyConnectionClosedError:
    case QNetworkReply::ProxyNotFoundError:
    case QNetworkReply::ProxyTimeoutError:
        return error(Kind::unreachable,
            QStringLiteral("The proxy on the way to %1 does not answer. Check the proxy settings."),
            url);
    // What is not HTTP also arrives here: the manager then closes and wants to begin again.
    case QNetworkReply::RemoteHostClosedError:
    case QNetworkReply::ContentReSendError:
        return error(Kind::unreachable,
            QStringLiteral("%1 gave no proper answer. Check its address, or try again later."),
            url);
    case QNetworkReply::NoError:
    case QNetworkReply::ProtocolFailure:
        return error(Kind::notHTTP,
            QStringLiteral("%1 does not answer as a web server does. Check its address."), url);
    default:
        return error(Kind::unreachable,
            QStringLiteral("The connection to %1 failed. Check the internet connection and try "
                           "again."),
            url);
    }
}

} // namespace

std::optional<TransportError> TransportErrorLogic::failure(
    const ReplyEnding& ending, const HTTPRequest& request)
{
    if (ending.error == QNetworkReply::OperationCanceledError)
        return timedOut(request);
    if (!ending.hasHead)
        return noAnswer(ending.error, request.url);
    if (cameToItsEnd(ending))
        return std::nullopt;
    return error(Kind::truncated,
        QStringLiteral("The connection to %1 broke in the middle of its answer. Try again."),
        request.url);
}

TransportError TransportErrorLogic::tookTooLong(const HTTPRequest& request)
{
    const auto seconds = std::chrono::ceil<std::chrono::seconds>(*request.longest).count();
    const auto text = QStringLiteral("%1 did not finish its answer within %2 seconds.");
    return { Kind::timedOut, text.arg(serverName(request.url), QString::number(seconds)) };
}

TransportError TransportErrorLogic::notAWebAddress(const QUrl& url)
{
    const auto text = QStringLiteral("“%1” is not the address of a web server. It begins with "
                                     "“https://” or “http://”.");
    const auto shown = url.toDisplayString(QUrl::RemoveUserInfo | QUrl::RemoveQuery);
    return { Kind::unreachable, text.arg(shown) };
}

TransportError TransportErrorLogic::bodyTooLarge(const QUrl& url)
{
    return error(Kind::tooLarge,
        QStringLiteral("The answer of %1 is larger than 64 MiB and was given up."), url);
}

TransportError TransportErrorLogic::lineTooLong(const QUrl& url)
{
    return error(Kind::tooLarge,
        QStringLiteral("The answer of %1 holds a line of more than 8 MiB and was given up."), url);
}

} // namespace pobblewig
