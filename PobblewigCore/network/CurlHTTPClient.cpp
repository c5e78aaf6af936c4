#include "network/CurlHTTPClient.h"

#include "foundation/TransportErrorLogic.h"
#include "network/LineSplitter.h"

#include <memory>

namespace pobblewig {

namespace {

std::optional<TransportError> excess(const LineSplitter& splitter, const QUrl& url)
{
    if (splitter.isTooLong())
        return TransportErrorLogic::lineTooLong(url);
    if (splitter.lineCount() > TransportErrorLogic::maximumLines)
        return TransportErrorLogic::tooManyLines(url);
    return std::nullopt;
}

Task<> cutIntoLines(std::shared_ptr<HTTPParts> parts, HTTPStream::Sink lines, QUrl url)
{
    LineSplitter splitter(TransportErrorLogic::maximumLineLength);
    while (co_await lines.wanted()) {
        const auto part = co_await parts->next();
        if (!part)
            break;
        if (const auto* head = std::get_if<HTTPResponse>(&*part)) {
            lines.push(HTTPHead { head->status, head->headers });
            continue;
        }
        for (auto& line : splitter.add(std::get<QByteArray>(*part)))
            lines.push(std::move(line));
        if (auto error = excess(splitter, url)) {
            parts->close();
            lines.finish(std::move(error));
            co_return;
        }
    }
    if (auto last = splitter.finish(); last && !parts->error())
        lines.push(*std::move(last));
    lines.finish(parts->error());
}

} // namespace

CurlHTTPClient::CurlHTTPClient(const QProcessEnvironment& environment)
    : m_proxies(environment)
{
}

Task<tl::expected<HTTPResponse, TransportError>> CurlHTTPClient::send(HTTPRequest request)
{
    const auto parts = start(std::move(request));
    HTTPResponse response;
    while (auto part = co_await parts.next()) {
        if (auto* head = std::get_if<HTTPResponse>(&*part))
            response = std::move(*head);
        else
            response.body += std::get<QByteArray>(*part);
    }
    if (parts.error())
        co_return tl::unexpected(*parts.error());
    co_return response;
}

HTTPStream CurlHTTPClient::stream(HTTPRequest request)
{
    const auto url = request.url;
    const auto parts = std::make_shared<HTTPParts>(start(std::move(request)));
    HTTPStream lines;
    lines.sink().setOnDrop([parts] { parts->close(); });
    spawn(cutIntoLines(parts, lines.sink(), url));
    return lines;
}

HTTPParts CurlHTTPClient::start(HTTPRequest request)
{
    const auto proxy = m_proxies.proxyFor(request.url);
    return CurlTransfer::start(m_multi, m_transfers, std::move(request), proxy);
}

} // namespace pobblewig
