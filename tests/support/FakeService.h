#pragma once

#include "foundation/HTTPClient.h"

#include <functional>
#include <map>

namespace pobblewig {

/// An online service that answers each path, without its query, by its own list of pages.
class FakeService : public HTTPClient {
public:
    using Reply = tl::expected<HTTPResponse, TransportError>;

    /// A list that is handed out in pages, each with a link to the next one.
    void serve(const QString& path, std::vector<QByteArray> pages)
    {
        m_pages[path] = std::move(pages);
    }
    /// Instead of what is served.
    void refuse(const QString& path, const HTTPResponse& response)
    {
        m_refusals.insert_or_assign(path, Reply(response));
    }
    void fail(const QString& path, const TransportError& error)
    {
        m_refusals.insert_or_assign(path, tl::unexpected(error));
    }
    void relent() { m_refusals.clear(); }

    const std::vector<HTTPRequest>& requests() const { return m_requests; }

    /// Called before each answer.
    std::function<void()> onRequest = [] {};
    /// Where the links lead.
    QByteArray server = "https://canvas.test";

    Task<Reply> send(HTTPRequest request) override
    {
        m_requests.push_back(request);
        onRequest();
        const auto path = request.url.path();
        if (const auto refusal = m_refusals.find(path); refusal != m_refusals.end())
            co_return refusal->second;
        const auto served = m_pages.find(path);
        if (served == m_pages.end())
            co_return HTTPResponse { 404, {}, R"({"errors":[{"message":"not here"}]})" };
        co_return page(served->second, path, request.url.fragment().toInt());
    }

    HTTPStream stream(HTTPRequest) override { return {}; }

private:
    Reply page(const std::vector<QByteArray>& pages, const QString& path, int number) const
    {
        HTTPResponse response { 200, {}, pages.at(size_t(number)) };
        const auto next = "<" + server + path.toUtf8() + "#" + QByteArray::number(number + 1);
        const auto first = "<" + server + path.toUtf8() + ">; rel=\"first\"";
        if (size_t(number) + 1 < pages.size())
            response.headers.push_back({ "link", first + ", " + next + ">; rel=\"next\"" });
        return response;
    }

    std::map<QString, std::vector<QByteArray>> m_pages;
    std::map<QString, Reply> m_refusals;
    std::vector<HTTPRequest> m_requests;
};

} // namespace pobblewig
