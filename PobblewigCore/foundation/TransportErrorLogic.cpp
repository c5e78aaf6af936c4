#include "foundation/TransportErrorLogic.h"

#include <QCoreApplication>

namespace pobblewig {

using Kind = TransportError::Kind;

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(TransportErrorLogic)
};

QString serverName(const QUrl& url)
{
    return url.adjusted(QUrl::RemoveUserInfo).authority();
}

TransportError error(Kind kind, const QString& text, const QUrl& url)
{
    return { kind, text.arg(serverName(url)) };
}

} // namespace

TransportError TransportErrorLogic::notAWebAddress(const QUrl& url)
{
    const auto text = Texts::tr("“%1” is not a web address. Web addresses begin with “https://” "
                                "or “http://”.");
    const auto shown = url.toDisplayString(QUrl::RemoveUserInfo | QUrl::RemoveQuery);
    return { Kind::notAWebAddress, text.arg(shown) };
}

TransportError TransportErrorLogic::serverNotFound(const QUrl& url)
{
    return error(Kind::hostNotFound,
        Texts::tr("No server named %1 was found. Check its address and the internet connection."),
        url);
}

TransportError TransportErrorLogic::nothingAnswers(const QUrl& url)
{
    return error(Kind::refused,
        Texts::tr("Nothing answers at %1. Check that the server is running and that its address is "
                  "right."),
        url);
}

TransportError TransportErrorLogic::notSecure(Kind reason, const QUrl& url)
{
    return error(reason,
        Texts::tr("No secure connection to %1: its identity could not be confirmed. Check its "
                  "address and this computer's date."),
        url);
}

TransportError TransportErrorLogic::proxyIsSilent(const QUrl& url)
{
    return error(Kind::proxyIsSilent,
        Texts::tr("The proxy on the way to %1 does not answer. Check the proxy settings."), url);
}

TransportError TransportErrorLogic::proxyRefuses(const QUrl& url)
{
    return error(Kind::proxyRefuses,
        Texts::tr("The proxy on the way to %1 wants a name and a password. Check the proxy "
                  "settings."),
        url);
}

TransportError TransportErrorLogic::connectionFailed(const QUrl& url)
{
    return error(Kind::unreachable,
        Texts::tr("The connection to %1 failed. Check the internet connection and try again."),
        url);
}

TransportError TransportErrorLogic::answeredBadly(const QUrl& url)
{
    return error(Kind::unreachable,
        Texts::tr("%1 did not answer properly. Check its address, or try again later."), url);
}

TransportError TransportErrorLogic::notHTTP(const QUrl& url)
{
    return error(
        Kind::notHTTP, Texts::tr("%1 does not answer like a web server. Check its address."), url);
}

TransportError TransportErrorLogic::lostConnection(const QUrl& url)
{
    return error(Kind::truncated,
        Texts::tr("The connection to %1 was lost in the middle of its answer. Try again."), url);
}

TransportError TransportErrorLogic::wentSilent(const HTTPRequest& request)
{
    const auto seconds = std::chrono::ceil<std::chrono::seconds>(request.timeout).count();
    const auto text =
        Texts::tr("%1 sent nothing for %n seconds. Try again later.", nullptr, int(seconds));
    return { Kind::timedOut, text.arg(serverName(request.url)) };
}

TransportError TransportErrorLogic::tookTooLong(const HTTPRequest& request)
{
    const auto seconds = std::chrono::ceil<std::chrono::seconds>(*request.longest).count();
    const auto text =
        Texts::tr("%1 did not finish its answer within %n seconds.", nullptr, int(seconds));
    return { Kind::timedOut, text.arg(serverName(request.url)) };
}

TransportError TransportErrorLogic::beganTooLate(const QUrl& url, std::chrono::milliseconds limit)
{
    const auto seconds = std::chrono::ceil<std::chrono::seconds>(limit).count();
    const auto text = Texts::tr(
        "%1 did not begin its answer within %n seconds. Try again later.", nullptr, int(seconds));
    return { Kind::timedOut, text.arg(serverName(url)) };
}

TransportError TransportErrorLogic::headTooLarge(const QUrl& url)
{
    return error(Kind::tooLarge,
        Texts::tr("The answer from %1 has an oversized header and was discarded."), url);
}

TransportError TransportErrorLogic::bodyTooLarge(const QUrl& url)
{
    return error(Kind::tooLarge,
        Texts::tr("The answer from %1 is larger than 64 MiB and was discarded."), url);
}

TransportError TransportErrorLogic::lineTooLong(const QUrl& url)
{
    return error(Kind::tooLarge,
        Texts::tr("The answer from %1 has a line of more than 8 MiB and was discarded."), url);
}

TransportError TransportErrorLogic::tooManyLines(const QUrl& url)
{
    return error(Kind::tooLarge,
        Texts::tr("The answer from %1 has more than a million lines and was discarded."), url);
}

} // namespace pobblewig
