#pragma once

#include "network/CurlHTTPClient.h"

namespace pobblewig {

/// The real network, which tells when nothing is under way. Each stream's first line takes its time
/// on the simulated clock.
class WatchedHTTPClient : public HTTPClient {
public:
    explicit WatchedHTTPClient(std::function<void()> passTime)
        : m_passTime(std::move(passTime))
    {
    }

    bool isIdle() const { return m_underWay == 0; }

    Task<tl::expected<HTTPResponse, TransportError>> send(HTTPRequest request) override
    {
        ++m_underWay;
        auto response = co_await m_network.send(std::move(request));
        --m_underWay;
        co_return response;
    }

    HTTPStream stream(HTTPRequest request) override
    {
        HTTPStream watched;
        const auto lines = std::make_shared<HTTPStream>(m_network.stream(std::move(request)));
        watched.sink().setOnDrop([lines] { lines->close(); });
        spawn(pass(lines, watched.sink()));
        return watched;
    }

private:
    Task<> pass(std::shared_ptr<HTTPStream> lines, HTTPStream::Sink sink)
    {
        ++m_underWay;
        auto line = co_await lines->next();
        m_passTime();
        for (; line; line = co_await lines->next())
            sink.push(*std::move(line));
        sink.finish(lines->error());
        --m_underWay;
    }

    std::function<void()> m_passTime;
    CurlHTTPClient m_network;
    int m_underWay = 0;
};

} // namespace pobblewig
