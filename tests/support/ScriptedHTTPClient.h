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

    Task<Reply> send(HTTPRequest request) override;
    HTTPStream stream(HTTPRequest request) override;

private:
    Reply nextReply(HTTPRequest request);

    std::deque<Reply> m_replies;
    std::vector<HTTPRequest> m_requests;
};

} // namespace pobblewig
