#include "foundation/NetworkHTTPClient.h"

#include "foundation/EnvironmentProxies.h"
#include "foundation/HTTPExchange.h"
#include "foundation/LineSplitter.h"
#include "foundation/TransportErrorLogic.h"

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
            lines.push(HTTPHead { head->status });
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

NetworkHTTPClient::NetworkHTTPClient()
{
    m_manager.setProxyFactory(new EnvironmentProxies(QProcessEnvironment::systemEnvironment()));
}

Task<tl::expected<HTTPResponse, TransportError>> NetworkHTTPClient::send(HTTPRequest request)
{
    const auto parts = HTTPExchange::start(m_manager, std::move(request));
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

HTTPStream NetworkHTTPClient::stream(HTTPRequest request)
{
    const auto url = request.url;
    const auto parts =
        std::make_shared<HTTPParts>(HTTPExchange::start(m_manager, std::move(request)));
    HTTPStream lines;
    lines.sink().setOnDrop([parts] { parts->close(); });
    spawn(cutIntoLines(parts, lines.sink(), url));
    return lines;
}

} // namespace pobblewig
