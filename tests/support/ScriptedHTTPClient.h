#pragma once

#include "foundation/HTTPClient.h"

#include <QByteArrayList>

#include <deque>

namespace pobblewig {

/// Answers each request with the next queued reply and keeps what was asked.
class ScriptedHTTPClient : public HTTPClient {
public:
    using Reply = tl::expected<HTTPResponse, TransportError>;

    void enqueue(Reply reply) { m_replies.push_back(std::move(reply)); }
    void enqueue(int status, const QByteArray& body) { enqueue(HTTPResponse { status, {}, body }); }

    const std::vector<HTTPRequest>& requests() const { return m_requests; }

    Task<Reply> send(HTTPRequest request) override { co_return nextReply(std::move(request)); }

    HTTPStream stream(HTTPRequest request) override
    {
        HTTPStream stream;
        const auto reply = nextReply(std::move(request));
        if (!reply) {
            stream.sink().finish(reply.error());
            return stream;
        }
        stream.sink().push(HTTPHead { reply->status });
        for (const auto& line : reply->body.split('\n'))
            stream.sink().push(line);
        stream.sink().finish();
        return stream;
    }

private:
    Reply nextReply(HTTPRequest request)
    {
        m_requests.push_back(std::move(request));
        if (m_replies.empty())
            return tl::unexpected(TransportError { {}, QStringLiteral("no reply was scripted") });
        auto reply = std::move(m_replies.front());
        m_replies.pop_front();
        return reply;
    }

    std::deque<Reply> m_replies;
    std::vector<HTTPRequest> m_requests;
};

} // namespace pobblewig
