#include "support/ScriptedHTTPClient.h"

namespace pobblewig {

Task<ScriptedHTTPClient::Reply> ScriptedHTTPClient::send(HTTPRequest request)
{
    co_return nextReply(std::move(request));
}

HTTPStream ScriptedHTTPClient::stream(HTTPRequest request)
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

ScriptedHTTPClient::Reply ScriptedHTTPClient::nextReply(HTTPRequest request)
{
    m_requests.push_back(std::move(request));
    if (m_replies.empty())
        return tl::unexpected(TransportError { {}, QStringLiteral("no reply was scripted") });
    auto reply = std::move(m_replies.front());
    m_replies.pop_front();
    return reply;
}

} // namespace pobblewig
